// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "script/dummy_runner.h"

#include <memory>

#include "foundation/random.h"
#include "platform/platform.h"
#include "script/behaviour.h"
#include "script/condition.h"
#include "script/lifetime.h"
#include "script/method_table.h"
#include "structure/scene.h"

namespace {

CMC_Object* lookUp(const MethodCall& c, const CXString& name) {
    return c.scene ? c.scene->lookUp(name.view()) : nullptr;
}

// A block of a parameter: the behaviour that its text names, else one made of the text for the time of the statement.
class Block {
public:
    Block(const MethodCall& c, CXString text) {
        text.AllTrim(' ');
        if (CMC_Object* found = lookUp(c, text)) {
            if (found->getType() == CMC_Behaviour::kType) block_ = static_cast<CMC_Behaviour*>(found);
            return;
        }
        made_ = std::make_unique<CMC_Behaviour>(c.scene, std::move(text), "temp");
        made_->hold();  // THIS^BREAK() in its code must not end it for good
        made_->init();
        block_ = made_.get();
    }

    CMC_Behaviour* get() const { return block_.get(); }  // null when it names no behaviour, or is gone
    bool run(bool asThis, bool checkCondition) const {
        CMC_Behaviour* block = get();
        return block && block->run(asThis ? block : nullptr, nullptr, checkCondition);
    }

private:
    std::unique_ptr<CMC_Behaviour> made_;
    Ref<CMC_Behaviour> block_;
};

CMC_Variable* ifThen(const MethodCall& c) {
    const CXString a = c.text(0);
    const CXString op = c.text(1);
    const CXString b = c.text(2);
    const CXString whenTrue = c.count() >= 4 ? c.text(3) : CXString();
    const CXString whenFalse = c.count() >= 5 ? c.text(4) : CXString();
    CXString text = CMC_Condition::valid(c.scene, a, op, b) ? whenTrue : whenFalse;
    text.AllTrim(' ');
    if (!text.IsString()) return nullptr;
    return Block(c, text).run(true, false) ? CMC_Variable::breakValue() : nullptr;
}

// A break in the body ends the pass and not the loop.
CMC_Variable* whileHolds(const MethodCall& c) {
    const CXString a = c.text(0);
    const CXString op = c.text(1);
    const CXString b = c.text(2);
    const Block body(c, c.text(3));
    while (CMC_Condition::valid(c.scene, a, op, b)) {
        // Without a body nothing is left that could change the condition.
        if (body.get() == nullptr || !ScriptBudget::spend()) break;
        body.run(false, false);
    }
    return nullptr;
}

// The bounds are read anew in each pass.
CMC_Variable* loop(const MethodCall& c) {
    if (c.scene == nullptr) return nullptr;
    const Block body(c, c.text(0));
    auto* counter = new CMC_Integer(CXString("_I_"));
    c.scene->addObject(counter);
    const Ref<CMC_Integer> alive(counter);
    bool broke = false;
    std::int64_t i = c.integer(1);
    while (!broke && body.get() && i < static_cast<std::int64_t>(c.integer(1)) + c.integer(2) &&
           ScriptBudget::spend()) {
        if (alive) counter->setValue(static_cast<int>(i));
        broke = body.run(false, true);
        i += c.integer(3);
    }
    if (alive) CMC_Scene::discard(counter);
    return broke ? CMC_Variable::breakValue() : nullptr;
}

CMC_Variable* giveBack(const MethodCall& c) {
    if (c.scene == nullptr) return nullptr;
    const CXString value = c.text(0);
    if (CMC_Object* former = lookUp(c, "__RETURN__")) CMC_Scene::discard(former);
    auto* result = new CMC_String("__RETURN__", value);
    c.scene->addObject(result);
    return result;
}

CMC_Variable* leave(const MethodCall&) { return CMC_Variable::breakValue(); }

template <class T>
CMC_Variable* valueAs(const MethodCall& c) {
    T* result = CMC_VariableFactory::alloc<T>();
    result->assign(T::read(c.value(0)));
    return result;
}

CMC_Variable* convert(const MethodCall& c) {
    const CXString type = c.text(1);
    if (type == "STRING") return valueAs<CMC_String>(c);
    if (type == "INTEGER") return valueAs<CMC_Integer>(c);
    if (type == "BOOL") return valueAs<CMC_Bool>(c);
    if (type == "DOUBLE") return valueAs<CMC_Double>(c);
    return nullptr;
}

CMC_Variable* messageBox(const MethodCall& c) {
    if (c.count() == 0) return nullptr;
    CXString text;
    for (int i = 0; i < c.count(); ++i) {
        if (i) text += ", ";
        text += c.text(i);
    }
    platform::current().shell.messageBox("Message", text.view(), 0);
    return nullptr;
}

// A variable of the running block, which dies with the run.
template <class T>
CMC_Variable* declare(const MethodCall& c) {
    const CXString name = c.text(0);
    if (c.object == nullptr || c.scene == nullptr || lookUp(c, name)) return nullptr;
    auto* variable = new T(name);
    variable->assign(T::read(c.value(1)));
    variable->setAsTemporary();
    c.scene->addObject(variable);
    static_cast<CMC_Behaviour*>(c.object)->addTempObject(variable);
    return toScript(variable->getValue());
}

CMC_Variable* valueNamed(const MethodCall& c) {
    CMC_Object* found = lookUp(c, c.text(0));
    if (found == nullptr) return nullptr;
    CMC_Variable* value = found->asVariable();
    return value ? value : toScript(found->getName());
}

CXString timerName(CMC_Scene* scene) {
    CXString name;
    do {
        name = "timer_" + CXString::toString(CXRandom::draw());
    } while (scene->lookUp(name.view()));
    return name;
}

CMC_Behaviour* addTimerBlock(CMC_Scene* scene, const CXString& code) {
    auto* block = new CMC_Behaviour(scene, code, timerName(scene));
    block->init();
    scene->addObject(block);
    return block;
}

CMC_Variable* runOnTimer(const MethodCall& c) {
    if (c.scene == nullptr) return nullptr;
    const int interval = c.integer(0);
    const int count = c.integer(1);
    const CXString body = c.text(2);
    const CXString endText = c.text(3);
    CXString code = body;
    if (CMC_Object* found = lookUp(c, body); found && found->getType() == CMC_Behaviour::kType)
        code = static_cast<CMC_Behaviour*>(found)->getCode();
    // `&1` is a `$1` that survived the substitutions made on the way here.
    code.Replace('&', '$');
    CMC_Object* found = lookUp(c, endText);
    CMC_Behaviour* end =
        found && found->getType() == CMC_Behaviour::kType ? static_cast<CMC_Behaviour*>(found) : nullptr;
    if (found == nullptr && endText.IsString()) end = addTimerBlock(c.scene, endText);
    CodeParams params = {"0"};
    for (int i = 4; i < c.count(); ++i)
        params.push_back(c.text(i));
    CMC_Behaviour* block = addTimerBlock(c.scene, code);
    block->runOnTimer(interval, count, std::move(params), end);
    return toScript(block->getName());
}

constexpr MethodRow kStatements[] = {
    {1,  "IF",         {ifThen, "sssss"}           },
    {2,  "WHILE",      {whileHolds, "ssss"}        },
    {3,  "RETURN",     {giveBack, "s"}             },
    {4,  "BREAK",      {leave, ""}                 },
    {5,  "CONV",       {convert, "vs"}             },
    {6,  "MSGBOX",     {messageBox, "*"}           },
    {7,  "BOOL",       {declare<CMC_Bool>, "sv"}   },
    {8,  "DOUBLE",     {declare<CMC_Double>, "sv"} },
    {9,  "INT",        {declare<CMC_Integer>, "sv"}},
    {10, "STRING",     {declare<CMC_String>, "sv"} },
    {11, "LOOP",       {loop, "siii"}              },
    {12, "VALUE",      {valueNamed, "s"}           },
    {13, "RUNONTIMER", {runOnTimer, "iiss*"}       },
};
static_assert(isMethodTable(kStatements));

}  // namespace

void CMC_Dummy_Runner::prepareMthHashSet() { enterMethods(kStatements); }

CMC_Variable* CMC_Dummy_Runner::run(int id, CMC_Object* object, CMC_Scene* scene, CXVector* params) {
    const MethodRow* row = methodOf(id);
    return row ? row->does.handler({*this, object, scene, params}) : nullptr;
}
