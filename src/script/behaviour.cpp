// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "script/behaviour.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "definition/element.h"
#include "frame/window.h"
#include "platform/platform.h"
#include "script/code_line.h"
#include "script/condition.h"
#include "script/lifetime.h"
#include "script/variable.h"
#include "structure/scene.h"

namespace {

constexpr std::array<std::string_view, 3> kSignals = {"ONINIT", "ONDONE", "ONSIGNAL"};

constexpr int kStatementLimit = 10240;
constexpr int kBlockLimit = 1 << 20;  // of a block's text with its parameters put in

// Shared by all generated names, and starts anew with each application.
int nameCounter = 0;

std::vector<std::unique_ptr<CMC_Object>> trash;

CXString withoutBraces(CXString code) {
    code.AllTrim(' ');
    if (code.GetAt(0) == '{') code.right(1);
    if (code.lastChar() == '}') code.left(code.GetLength() - 1);
    code.AllTrim(' ');
    return code;
}

}  // namespace

// The compiled statements, which outlive their block's interest in them while they run.
struct CMC_Behaviour::Lines {
    std::vector<std::unique_ptr<CMC_CodeLine>> all;
    int runs = 0;
    bool isOrphan = false;
};

CMC_Behaviour::CMC_Behaviour(CMC_Scene* scene) : CMC_Object("", kType) { setScene(scene); }

CMC_Behaviour::CMC_Behaviour(CMC_Scene* scene, CMElement* element)
    : CMC_Object(scene, element, kType),
      code_(withoutBraces(element->getPropertyValue("CODE"))),
      condition_(element->getPropertyValue("CONDITION")) {
    initializeBehaviours(scene, element);
}

CMC_Behaviour::CMC_Behaviour(CMC_Scene* scene, CXString code, CXString name)
    : CMC_Object(std::move(name), kType), code_(withoutBraces(std::move(code))) {
    setScene(scene);
}

CMC_Behaviour::~CMC_Behaviour() {
    endTimer();
    drop(false);
    flushTempObjects();
}

std::span<const std::string_view> CMC_Behaviour::getBehavioursList() const { return kSignals; }

void CMC_Behaviour::retire() {
    CMC_Object::retire();
    endTimer();
}

bool CMC_Behaviour::run(CMC_Object* self, const CodeParams* params, bool checkCondition) {
    if (!enabled_ || !lines_) return false;
    if (!ScriptScope::mayEnter()) return false;
    const ScriptScope scope;
    if (checkCondition)
        if (CMC_BasicCondition* condition = conditionInterface_.get(); condition && !condition->valid(true))
            return false;
    // The condition's own signals may have dropped the statements.
    if (!lines_) return false;
    Lines* lines = lines_.get();
    ++runs_;
    ++lines->runs;
    bool broke = false;
    for (std::size_t i = 0; i < lines->all.size() && !broke && ScriptBudget::spend(); ++i) {
        CMC_Variable* result = lines->all[i]->run(self, params);
        broke = result == CMC_Variable::breakValue();
        if (result && !broke) release(result);
    }
    if (--lines->runs == 0 && lines->isOrphan) delete lines;
    if (!tempObjects_.empty()) flushTempObjects();
    --runs_;
    return broke;
}

void CMC_Behaviour::addTempObject(CMC_Object* object) { tempObjects_.emplace_back(object); }

void CMC_Behaviour::flushTempObjects() {
    const auto objects = std::exchange(tempObjects_, {});
    for (const Ref<CMC_Object>& object : objects)
        CMC_Scene::discard(object.get());
}

void CMC_Behaviour::runOnTimer(int interval, int count, CodeParams params, CMC_Behaviour* end) {
    endTimer();
    CWindow* window = getScene() ? getScene()->getWindow() : nullptr;
    if (window == nullptr) return;
    timerTicks_ = 0;
    timerCount_ = count;
    timerParams_ = std::make_unique<CodeParams>(std::move(params));
    if (timerParams_->empty()) timerParams_->emplace_back();
    timerEnd_ = end;
    if (end) end->hold();
    timers_ = window->GetTimerInterface();
    timers_->add(objectId(), static_cast<unsigned>(std::max(0, interval)), this);
}

void CMC_Behaviour::onTimer(int) {
    if (timers_ == nullptr) return;
    const ScriptScope scope;
    ++timerTicks_;
    timerParams_->front() = CXString::toString(timerTicks_);
    const CodeParams params = *timerParams_;
    const bool broke = run(this, &params, false);
    if (timers_ == nullptr) return;  // ended by its own code
    if (!broke && (timerCount_ <= 0 || timerTicks_ != timerCount_)) return;
    timers_->remove(objectId());
    timers_ = nullptr;
    if (CMC_Behaviour* end = timerEnd_) {
        end->run(this, &params, true);
        if (end->getName() == "temp") CMC_Scene::discard(end);
    }
    CMC_Scene::discard(this);
    endTimer();
}

void CMC_Behaviour::_break() { CMC_Scene::discard(this); }

void CMC_Behaviour::endTimer() {
    if (timers_) timers_->remove(objectId());
    timers_ = nullptr;
    timerParams_.reset();
    if (timerEnd_) letGo(std::exchange(timerEnd_, nullptr));
}

void CMC_Behaviour::letGo(CMC_Behaviour* block) {
    if (--block->holds_ == 0 && block->isRetired()) destroyLate(std::unique_ptr<CMC_Object>(block));
}

void CMC_Behaviour::init() {
    CMC_Object::init();
    CXString code = code_;
    if (code.GetAt(0) == '{') {
        code.right(1);
        code.left(code.GetLength() - 1);
    }
    drop(false);
    if (code.IsString()) compile(code);
}

bool CMC_Behaviour::done(bool keep) {
    drop(keep);
    return CMC_Object::done(keep);
}

void CMC_Behaviour::compile(const CXString& code) {
    ScriptBudget::spendOnCode(code.GetLength());
    auto lines = std::make_unique<Lines>();
    for (const CXString& statement : cut(code))
        lines->all.push_back(std::make_unique<CMC_CodeLine>(this, statement));
    lines_ = std::move(lines);
    compiled_ = code;
}

void CMC_Behaviour::drop(bool keepBlocks) {
    if (!lines_) return;
    // Statements that are dropped may drop others on their way out: this block's are gone for them already.
    std::unique_ptr<Lines> lines = std::move(lines_);
    if (keepBlocks)
        for (const auto& line : lines->all)
            line->setOwnsBlocks(false);
    if (lines->runs == 0) return;
    lines->isOrphan = true;
    lines.release();  // NOLINT(bugprone-unused-return-value): the run that uses them deletes them
}

CMC_BasicCondition* CMC_Behaviour::getConditionInterface() const { return conditionInterface_.get(); }

void CMC_Behaviour::resolveCondition() {
    if (!condition_.IsString() || getScene() == nullptr) return;
    CMC_Object* found = getScene()->lookUp(condition_.view());
    if (found && CMC_BasicCondition::isConditionType(found->getType()))
        conditionInterface_ = static_cast<CMC_BasicCondition*>(found);
}

void CMC_Behaviour::setParams(const CodeParams& params) {
    const CXString text = CMC_CodeLine::substitute(code_, &params, kBlockLimit);
    if (lines_ && text == compiled_) return;
    drop(false);
    if (text.IsString()) compile(text);
}

CXString CMC_Behaviour::nextName(const char* prefix) { return prefix + CXString::toString(++nameCounter); }

CMC_Behaviour* CMC_Behaviour::makeBlock(CMC_Scene* scene, const CXString& text, const char* prefix) {
    if (scene == nullptr) return nullptr;
    auto block = std::make_unique<CMC_Behaviour>(scene, text, nextName(prefix));
    block->markAsMade();
    block->init();
    scene->addObject(block.get());
    return block.release();
}

void CMC_Behaviour::initTrash() {
    trash.clear();
    nameCounter = 0;
}

void CMC_Behaviour::doneTrash() { trash.clear(); }

void CMC_Behaviour::addToTrash(CMC_Object* object) {
    if (std::ranges::none_of(trash, [object](const auto& one) { return one.get() == object; }))
        trash.emplace_back(object);
}

void CMC_Behaviour::flushTrash() { flushTrash(0); }
int CMC_Behaviour::trashSize() { return static_cast<int>(trash.size()); }

void CMC_Behaviour::flushTrash(int from) {
    while (trashSize() > from) {
        const std::unique_ptr<CMC_Object> last = std::move(trash.back());
        trash.pop_back();
    }
}

std::vector<CXString> CMC_Behaviour::cut(const CXString& code) {
    std::vector<CXString> statements;
    std::string buffer;
    int depth = 0;
    for (const char c : code.view()) {
        if (c == ' ') continue;
        if (c == '(') ++depth;
        if (c == ')') --depth;
        if (c != ';' || depth != 0) {
            buffer += c;
            continue;
        }
        if (buffer.size() > kStatementLimit)
            platform::current().shell.debugOutput("script: a statement is too long and dropped: " +
                                                  buffer.substr(0, 60));
        else
            statements.emplace_back(std::string_view(buffer));
        buffer.clear();
    }
    return statements;
}
