// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "foundation/hashtable.h"
#include "foundation/string_hash_code.h"
#include "foundation/xobject.h"
#include "script/ref.h"

class CMC_Behaviour;
class CMC_Runner;
class CMC_Scene;
class CMC_Variable;
class CMElement;
class CXArchive;

// The texts that stand for $1, $2, ... while a block runs.
using CodeParams = std::vector<CXString>;

class CMC_Handler;

// The root of everything that a script can name.
//
// Signals are fired by key, NAME or NAME^qualifier, and run the handler of exactly that key. A class lists the names
// of its signals once, in order; a flag for each tells cheaply whether any handler of that name exists.
//
// Life: constructed, added to a scene, `init` once, `done` at the end. A scene takes an object out with `discard`,
// after which every Ref to it reads as null, and destroys it when no script is running any more.
class CMC_Object : public CXObject {
public:
    CMC_Object(CXString name, int type);
    CMC_Object(CMC_Scene* scene, CMElement* element, int type);
    CMC_Object(const CMC_Object&) = delete;
    CMC_Object& operator=(const CMC_Object&) = delete;
    ~CMC_Object() override;

    CXObject* clone() override { return nullptr; }  // a bare copy for clone(CMC_Object*); null: not cloneable

    virtual void init();           // fires ONINIT
    virtual bool done(bool keep);  // fires ONDONE, once in an object's life; true
    virtual void setScene(CMC_Scene* scene) { scene_ = scene; }
    virtual CMC_Scene* getScene() const { return scene_; }
    virtual int getClonesNo() const { return clonesNo_; }
    virtual int getCloneIdx() const;         // the number behind the last `_` of the name; 0: none
    virtual CXString getCloneName();         // NAME_n, counting on at each call
    virtual void clone(CMC_Object* target);  // fills in a bare copy and adds it to the scene, which owns it then
    virtual void clone(int n);
    virtual void resetClones() { clonesNo_ = 0; }
    virtual int getBehaviourIndex(const CXString& key) const;  // the first signal that the key starts with; -1: none
    // Binds the handlers that the element names, with a null element those that a stored record named.
    virtual void initializeBehaviours(CMC_Scene* scene, CMElement* element);
    // The class's signals in order. The first is ONINIT, the second ONDONE.
    virtual std::span<const std::string_view> getBehavioursList() const { return {}; }
    // For a type that has no runner in the factory: its own. Null: none.
    virtual CMC_Runner* getRunner() { return nullptr; }
    virtual bool verifyBehaviour(const CXString&) { return true; }
    // Replaces the handler of that key.
    virtual void addBehaviour(const CXString& key, CMC_Behaviour* behaviour, std::unique_ptr<CodeParams> params);
    virtual void removeBehaviour(const CXString& key);
    virtual CMC_Handler* getBehaviour(const CXString& key) const;  // of exactly that key; null: none
    // Runs the key's handler with this object as THIS. True when there is one, whatever its run did.
    virtual bool onSignal(CXString key);
    virtual bool onSignal(CXString key, const CodeParams* params);  // with these texts in place of the handler's own
    virtual void serialize(CXArchive* archive);

    const CXString& getName() const { return name_; }
    int getType() const { return type_; }
    bool isClone() const { return isClone_; }
    bool isTemporary() const { return isTemporary_; }
    void setAsTemporary() { isTemporary_ = true; }
    int getSignalIndex(const CXString& key) const;  // of the key's name without its qualifier; -1: none

    static CXString typeToString(int type);  // "" for a type without a text
    // Gives a value back to its pool; values that aren't pooled, and null, are left alone. The flag has no effect.
    static void flush(CMC_Variable* value, bool flag = true);
    // Gives back a value that a method returned: a pooled one to its pool; a clone that stands in no scene dies.
    static void release(CMC_Variable* value);

    // The object as a value; null when it is none.
    virtual CMC_Variable* asVariable() { return nullptr; }

    // Takes the object out of service: fires ONDONE unless `done` has, and from then on references to it read as null
    // and nothing outside calls it. Timers and listeners are given back here, for the destructor may run much later.
    virtual void retire();
    bool isRetired() const { return isRetired_; }

    // Another object has taken this one's name in the scene's table: what was bound to it by name looks again.
    void displace() { isDisplaced_ = true; }
    bool isDisplaced() const { return isDisplaced_; }

    std::uint32_t refSlot() {
        if (refSlot_ == 0 && !isRetired_) refSlot_ = RefRegistry::acquire(this);
        return refSlot_;
    }

protected:
    bool hasSignals() const { return signalUsed_ != 0; }
    bool isSignalUsed(int index) const { return (signalUsed_ >> index & 1U) != 0; }
    // Fires NAME^qualifier, and when no handler took that, NAME; nothing unless the signal's flag is set.
    bool fire(int index, const CXString& qualifier);
    // The flags go; the handlers whose behaviours are gone go too.
    void flushBehList();
    void setName(CXString name) { name_ = std::move(name); }
    void setAsClone() { isClone_ = true; }

private:
    void fireDone();

    CXString name_;
    int type_;
    bool isClone_ = false;
    bool isTemporary_ = false;
    bool isDone_ = false;
    bool isRetired_ = false;
    bool isDisplaced_ = false;
    std::uint32_t signalUsed_ = 0;  // bit i: a handler for signal i exists
    std::uint32_t refSlot_ = 0;     // 0: never referred to
    int clonesNo_ = 0;
    CMC_Scene* scene_ = nullptr;
    std::unique_ptr<CHashtable> handlers_;  // signal key to CMC_Handler, owned; made when first used
};

// What runs when a signal fires: a behaviour and the texts given to it. It never keeps the behaviour alive.
class CMC_Handler : public CXObject {
public:
    CMC_Handler(CMC_Behaviour* behaviour, std::unique_ptr<CodeParams> params);
    ~CMC_Handler() override;

    CMC_Behaviour* getBehaviour() const;  // null once the behaviour is gone
    const CXString& getBehaviourName() const { return name_; }
    const CodeParams* getParams() const { return params_.get(); }  // null: none

    std::unique_ptr<CMC_Handler> copy() const;

    // Binds a handler that a stored record named to the real behaviour.
    void rebind(CMC_Behaviour* behaviour);
    // A handler of that name, not bound yet.
    CMC_Handler(CXString name, std::unique_ptr<CodeParams> params);

private:
    Ref<CMC_Object> behaviour_;  // a CMC_Behaviour
    CXString name_;
    std::unique_ptr<CodeParams> params_;
};

// The signals that every object with signals has, and their places. Lists begin with these three.
inline constexpr int kOnInit = 0;
inline constexpr int kOnDone = 1;
inline constexpr int kOnSignal = 2;
