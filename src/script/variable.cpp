// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "script/variable.h"

#include <array>
#include <cmath>
#include <limits>

#include "definition/element.h"
#include "frame/application.h"
#include "frame/config.h"
#include "frame/window.h"
#include "script/bool.h"
#include "script/double.h"
#include "script/integer.h"
#include "script/lifetime.h"
#include "script/string.h"
#include "storage/archive.h"
#include "structure/scene.h"

namespace {

constexpr std::array<std::string_view, 6> kSignals = {"ONINIT",    "ONDONE",          "ONSIGNAL",
                                                      "ONCHANGED", "ONBRUTALCHANGED", "ONNETCHANGE"};
constexpr int kOnChanged = 3;
constexpr int kOnBrutalChanged = 4;
constexpr int kOnNetChange = 5;

CMC_String breakText("break");

}  // namespace

CConfig* configOf(CMC_Scene* scene) {
    CWindow* window = scene ? scene->getWindow() : nullptr;
    CApplication* application = window ? window->GetApplicationInterface() : nullptr;
    return application ? application->GetConfigInterface() : nullptr;
}

CMC_Variable* const CMC_Variable::breakValue_ = &breakText;

CMC_Variable::CMC_Variable(CMC_Scene* scene, CMElement* element, int type)
    : CMC_Object(scene, element, type),
      toIni_(element->getPropertyBoolValue("TOINI")),
      netNotify_(element->getPropertyBoolValue("NETNOTIFY")) {
    setAsVariable(this);
}

int CMC_Variable::compare(CXObject* other) { return compare(static_cast<CMC_Object*>(other)->asVariable()); }

CMC_Variable* CMC_Variable::convert(int type) {
    if (type == getType()) return this;
    const auto handOver = [](auto* result, const auto& value) {
        result->assign(value);
        return result;
    };
    // The value is read before this slot goes back, for the new one may be the same.
    switch (type) {
        case CMC_Integer::kType: {
            const int value = asInteger();
            flush(this);
            return handOver(CMC_VariableFactory::allocInteger(), value);
        }
        case CMC_String::kType: {
            const CXString value = asString();
            flush(this);
            return handOver(CMC_VariableFactory::allocString(), value);
        }
        case CMC_Bool::kType: {
            const bool value = asBool();
            flush(this);
            return handOver(CMC_VariableFactory::allocBool(), value);
        }
        case CMC_Double::kType: {
            const double value = asDouble();
            flush(this);
            return handOver(CMC_VariableFactory::allocDouble(), value);
        }
        default:
            flush(this);
            return nullptr;
    }
}

void CMC_Variable::onChange(bool changed) {
    if (keepsSignalsOrIni()) tellChange(changed);
}

void CMC_Variable::tellChange(bool changed) {
    const ScriptScope scope;
    fire(kOnBrutalChanged, toString());
    if (!changed) return;
    fire(kOnChanged, toString());
    if (toIni_)
        if (CConfig* config = configOf(getScene())) config->PutString(getScene()->getName(), getName(), toString());
    // NETNOTIFY reaches the other players through NETSERVER or NETCLIENT; no scene has either of them yet.
}

void CMC_Variable::onNetChange(CMC_Variable* value) {
    const ScriptScope scope;
    if (isSignalUsed(kOnNetChange)) onSignal("ONNETCHANGE");
    set(value);
}

void CMC_Variable::init() {
    const ScriptScope scope;
    if (toIni_) {
        if (CConfig* config = configOf(getScene())) {
            const CXString kept = config->GetString(getScene()->getName(), getName());
            if (kept.IsString()) {
                CMC_String value("temp", kept);
                set(&value);
            } else {
                config->PutString(getScene()->getName(), getName(), toString());
            }
        }
    }
    CMC_Object::init();
}

std::span<const std::string_view> CMC_Variable::getBehavioursList() const { return kSignals; }

void CMC_Variable::serialize(CXArchive* archive) {
    CMC_Object::serialize(archive);
    if (archive->isStoring())
        *archive << toIni_ << netNotify_;
    else
        *archive >> toIni_ >> netNotify_;
}

CMC_Variable* CMC_Variable::resolve(const CXString& text) {
    const char first = text.GetAt(0);
    const auto give = [](auto* result, const auto& value) {
        result->assign(value);
        return result;
    };
    if (first == '"') {
        std::string_view inner = text.view().substr(1);
        if (inner.ends_with('"')) inner.remove_suffix(1);
        return give(CMC_VariableFactory::allocString(), CXString(inner));
    }
    if (first == '-' || (first >= '0' && first <= '9')) {
        if (text.Find('.') < 0) return give(CMC_VariableFactory::allocInteger(), CXString::toNumber(text));
        return give(CMC_VariableFactory::allocDouble(), CXString::toDouble(text));
    }
    if (text == "TRUE") return give(CMC_VariableFactory::allocBool(), true);
    if (text == "FALSE") return give(CMC_VariableFactory::allocBool(), false);
    return give(CMC_VariableFactory::allocString(), text);
}

void CMC_Variable::keep(std::unique_ptr<CMC_Variable>& kept, CMC_Variable* value) {
    const int type = value ? value->getType() : 0;
    if (!kept || kept->getType() != type) {
        kept.reset();
        if (type == CMC_Integer::kType) kept = std::make_unique<CMC_Integer>("temp");
        if (type == CMC_String::kType) kept = std::make_unique<CMC_String>("temp");
        if (type == CMC_Bool::kType) kept = std::make_unique<CMC_Bool>("temp");
        if (type == CMC_Double::kType) kept = std::make_unique<CMC_Double>("temp");
    }
    if (kept) kept->set(value);
}

int truncated(double value) {
    if (std::isnan(value)) return 0;
    if (value >= std::numeric_limits<int>::max()) return std::numeric_limits<int>::max();
    if (value <= std::numeric_limits<int>::min()) return std::numeric_limits<int>::min();
    return static_cast<int>(value);
}

void putInt32(std::byte* at, int value) {
    for (int i = 0; i < 4; ++i)
        at[i] = static_cast<std::byte>(static_cast<std::uint32_t>(value) >> (8 * i));
}
