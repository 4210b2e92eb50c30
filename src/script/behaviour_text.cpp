// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
// The evaluator that works on plain text: what IF, WHILE and other readers of text use at the moment of the call.
#include <algorithm>
#include <memory>

#include "script/behaviour.h"
#include "script/code_line.h"
#include "script/expression.h"
#include "script/lifetime.h"
#include "script/runner.h"
#include "script/runner_factory.h"
#include "script/variable.h"
#include "structure/scene.h"

namespace {

CMC_Object* lookUp(CMC_Scene* scene, const CXString& name) { return scene ? scene->lookUp(name.view()) : nullptr; }

// A byte of a compiled reference.
int packedByte(char c) { return static_cast<unsigned char>(c) & 127; }

}  // namespace

CMC_Variable* CMC_Behaviour::resolveParameter(CMC_Scene* scene, CMC_Object* self, const CXString& text,
                                              CMC_Behaviour* behaviour) {
    if (text.GetAt(0) == ' ' || text.lastChar() == ' ') {
        CXString trimmed = text;
        trimmed.AllTrim(' ');
        return resolveParameter(scene, self, trimmed, behaviour);
    }
    const char first = text.GetAt(0);
    if (first == '[') {
        CXString formula = text.Mid(1, std::max(1, text.GetLength() - 1));
        formula.AllTrim(' ');
        auto* expression = new CMC_Expression(scene, formula);
        addToTrash(expression);
        return expression;
    }
    if (text.view().starts_with("CONV")) return runLine(scene, self, "@" + text, behaviour);
    if (text.Find('^') >= 0 && first != '"') return runLine(scene, self, text, behaviour);
    if (first == '-' || (first >= '0' && first <= '9')) return CMC_Variable::resolve(text);
    if (CMC_Object* found = lookUp(scene, text)) return valueOf(found);
    return CMC_Variable::resolve(text);
}

CXVector* CMC_Behaviour::resolveParameters(CMC_Scene* scene, CMC_Object* self, CXString text,
                                           CMC_Behaviour* behaviour) {
    if (!text.IsString()) return nullptr;
    auto values = std::make_unique<CXVector>();
    for (const CXString& piece : cutParameters(text)) {
        CMC_Variable* value = resolveParameter(scene, self, piece, behaviour);
        if (value && value != CMC_Variable::breakValue()) values->add(value);
    }
    return values.release();
}

CMC_Object* CMC_Behaviour::resolveObject(CMC_Scene* scene, CMC_Object* self, CXString name, CXString* methodOut,
                                         CMC_Behaviour* behaviour) {
    const int first = name.Find('^');
    const CXString object = first > 0 ? name.Left(first) : CXString();
    *methodOut = name.Right(name.FindLast('^') + 1);
    if (object.GetAt(0) == '#')
        return scene && object.GetLength() > 2 ? scene->getObject(packedByte(object.GetAt(2))) : nullptr;
    if (object.GetAt(0) == '*') {
        CMC_Variable* value = resolveParameter(scene, self, object.Right(1), behaviour);
        const CXString target = value ? value->asString() : CXString();
        release(value);
        return lookUp(scene, target);
    }
    if (object == "THIS") return self;
    return lookUp(scene, object);
}

CMC_Variable* CMC_Behaviour::runLine(CMC_Scene* scene, CMC_Object* self, CXString line, CMC_Behaviour* behaviour) {
    if (!ScriptScope::mayEnter()) return nullptr;
    const ScriptScope scope;
    const int open = line.Find('(');
    const int pos = open < 0 ? line.GetLength() : open;
    CMC_Object* target = nullptr;
    CMC_Runner* runner = nullptr;
    CXString method;
    if (line.GetAt(0) == '@') {
        runner = CMC_RunnerFactory::getRunner(0);
        target = behaviour;
        method = line.Mid(1, pos);
    } else {
        target = resolveObject(scene, self, line.Left(pos), &method, behaviour);
        if (target) {
            runner = runnerOf(target);
        } else {
            runner = CMC_RunnerFactory::getRunner(0);
            method = line.Left(pos);
        }
    }
    if (runner == nullptr) return nullptr;
    CXString inner = line.Right(pos);
    inner.AllTrim(' ');
    if (inner.GetAt(0) == '(') inner.right(1);
    if (inner.lastChar() == ')') inner.left(inner.GetLength() - 1);
    inner.AllTrim(' ');
    const std::unique_ptr<CXVector> params(resolveParameters(scene, self, inner, behaviour));
    CMC_Variable* result = method.GetAt(0) == '#'
                               ? runner->run(packedByte(method.GetAt(1)), target, scene, params.get())
                               : runner->run(method, target, scene, params.get());
    if (params)
        for (CXObject* value : params->elements())
            release(static_cast<CMC_Variable*>(value));
    return result;
}
