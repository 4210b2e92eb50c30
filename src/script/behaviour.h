// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>
#include <vector>

#include "frame/timer.h"
#include "script/object.h"

class CMC_BasicCondition;
class CMC_CodeLine;

// A block of script code: its text, compiled into statements that run one after the other against the scene's objects.
//
// A block may run while it is running. What is compiled stays until nothing runs it any more, also when the block is
// compiled anew or removed meanwhile.
class CMC_Behaviour : public CMC_Object, public CTimerNotificator {
public:
    static constexpr int kType = 13;

    explicit CMC_Behaviour(CMC_Scene* scene);
    CMC_Behaviour(CMC_Scene* scene, CMElement* element);
    CMC_Behaviour(CMC_Scene* scene, CXString code, CXString name);
    ~CMC_Behaviour() override;

    // Runs the statements with that object as THIS; null: none. False without running anything when the block is
    // disabled, empty, or guarded by a condition that fails and `checkCondition` is set. True: left by a break.
    virtual bool run(CMC_Object* self, const CodeParams* params, bool checkCondition);
    // Takes over an object that is in the scene until the end of the current run.
    virtual void addTempObject(CMC_Object* object);
    // Runs the block every `interval` milliseconds, `count` times (0 or less: without end), with the tick's number as
    // its first parameter; then `end` once, when it isn't null. The first of `params` is where the number goes.
    virtual void runOnTimer(int interval, int count, CodeParams params, CMC_Behaviour* end);
    virtual void _break();  // ends the timer without running its end block; the block leaves the scene
    void onTimer(int id) override;

    void init() override;           // fires ONINIT and compiles
    bool done(bool keep) override;  // drops the statements; with `keep` the blocks that they made stay in the scene
    std::span<const std::string_view> getBehavioursList() const override;
    void retire() override;

    const CXString& getCode() const { return code_; }
    const CXString& getCodition() const { return condition_; }  // the name is part of the interface
    bool isEnabled() const { return enabled_; }
    void enable(bool enabled) { enabled_ = enabled; }
    CMC_BasicCondition* getConditionInterface() const;
    void resolveCondition();
    // Compiles the code with the parameters put in; the code itself stays as it is.
    void setParams(const CodeParams& params);
    void flushTempObjects();

    // Keeps the block alive, though not in the scene, until letGo: for those who will still run it.
    void hold() { ++holds_; }
    // Gives back a hold; a discarded block dies with its last one.
    static void letGo(CMC_Behaviour* block);
    bool isHeld() const { return holds_ > 0; }
    // A block that was made from a parameter. It dies at once when it is discarded and not running.
    void markAsMade() { isMade_ = true; }
    bool diesAtOnce() const { return isMade_ && !isRunning() && tempObjects_.empty(); }
    bool isRunning() const { return runs_ > 0; }

    // The next of the names that blocks of parameters get: the prefix and a number.
    static CXString nextName(const char* prefix);
    // A block out of `text` under the next name with that prefix, compiled and added to the scene.
    static CMC_Behaviour* makeBlock(CMC_Scene* scene, const CXString& text, const char* prefix);

    // Values whose receiver is not known, until the next frame.
    static void initTrash();
    static void doneTrash();
    static void addToTrash(CMC_Object* object);
    static void flushTrash();
    static int trashSize();
    static void flushTrash(int from);  // only what was added since the trash had that size

    // Code from plain text, evaluated at the moment. `behaviour` is what `@` statements belong to; it may be null.
    static CMC_Variable* runLine(CMC_Scene* scene, CMC_Object* self, CXString line, CMC_Behaviour* behaviour);
    static CMC_Object* resolveObject(CMC_Scene* scene, CMC_Object* self, CXString name, CXString* methodOut,
                                     CMC_Behaviour* behaviour);
    // A new vector of what the pieces of the text give, the caller's; null for empty text.
    static CXVector* resolveParameters(CMC_Scene* scene, CMC_Object* self, CXString text, CMC_Behaviour* behaviour);
    static CMC_Variable* resolveParameter(CMC_Scene* scene, CMC_Object* self, CXString text, CMC_Behaviour* behaviour);

    // Cuts code into its statements: blanks go, `;` outside parentheses ends one, what stands behind the last is lost.
    static std::vector<CXString> cut(const CXString& code);

private:
    struct Lines;

    void compile(const CXString& code);
    void drop(bool keepBlocks);
    void endTimer();

    CXString code_;
    CXString condition_;  // name of a condition object, or empty
    Ref<CMC_BasicCondition> conditionInterface_;
    std::unique_ptr<Lines> lines_;
    CXString compiled_;  // the text that lines_ come from

    CXTimer* timers_ = nullptr;  // the window's, while a timer runs
    int timerTicks_ = 0;
    int timerCount_ = 0;
    std::unique_ptr<CodeParams> timerParams_;
    CMC_Behaviour* timerEnd_ = nullptr;  // held

    std::vector<Ref<CMC_Object>> tempObjects_;
    bool enabled_ = true;
    bool isMade_ = false;
    int holds_ = 0;
    int runs_ = 0;
};
