// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "foundation/hashtable.h"
#include "foundation/string_hash_code.h"
#include "script/object.h"

class CCollisionObserver;
class CGraphicsObject;
class CMC_Array;
class CMC_Application;
class CMC_DLLExModuleInterface;
class CMElements;
class CResourcesManager;
class CUnit6;
class CWindow;

// The room in which script objects live: a folder, a definition file and a table of objects.
//
// A plain scene is built from a few texts and stays empty until it is entered. Entering reads its file, builds its
// objects in a fixed order and runs their ONINIT; leaving destroys them all. Application and episode are scenes too,
// which load their own objects once, when they are built, and hold children, one of which runs.
//
// A switch between children is only noted when a script asks for it; `domodal` performs it.
class CMC_Scene : public CMC_Object {
public:
    static constexpr int kType = 1002;

    CMC_Scene(CWindow* window, int type);  // empty, to be filled from the binary store
    CMC_Scene(CWindow* window, CMC_Scene* parent, CMElement* element, int type);
    ~CMC_Scene() override;

    // Modules that add object types, by a list of names separated by commas.
    virtual void resolveDLLs(const CXString& names);
    virtual void doneDLLs();
    virtual CMC_Object* resolveEx(CMElement* element);  // a new object of one of the modules, or null
    virtual CMC_Object* serializeEx(CXArchive* archive, int type);
    virtual bool isBinary() const { return binary_; }
    virtual CMC_Scene* getCurrentScene() const { return current_; }
    virtual bool initialize(CMC_Scene* previous);  // enters; `previous` is the scene left, or null
    virtual void domodal();                        // performs a noted switch, then the child's own
    virtual void startMusic();
    virtual void stopMusic();
    virtual CXString getMusicFilename() const;  // the scene's own, else the parent's
    virtual bool shouldMusicBeStarted() const { return startMusic_; }
    virtual bool loadCnv();
    virtual CMC_Application* getMCApplication();
    virtual void restart();
    virtual void unload(CMC_Scene* next);                 // leaves; `next` is the scene that follows, or null
    virtual CMC_Scene* find(const CXString& name) const;  // a direct child; null: none
    virtual void _goto(CMC_Scene* next, CMC_Scene* old);  // at once
    virtual void _goto(const CXString& name);             // with the next domodal; an unknown name takes a wish back
    virtual void monitorCollisions(CGraphicsObject* object, bool alpha, CCollisionObserver* observer);
    virtual void removeMonitorCollisions(CGraphicsObject* object, CCollisionObserver* observer);
    virtual void getPlayingSeq(CMC_Array* names);  // adds the name of each SEQUENCE that plays
    virtual CMC_Object* createObject(const CXString& type, const CXString& name);  // "BUTTON"; null for others
    virtual const CXString& getPath() const { return path_; }
    virtual void onInit();

    void setUnit(CUnit6* unit) { unit_ = unit; }
    CUnit6* getUnit() const { return unit_; }
    CWindow* getWindow() const { return window_; }
    void setParent(CMC_Scene* parent) { parent_ = parent; }
    CResourcesManager* getResources() const;  // the unit's cache of media; null: no unit
    CMC_Scene* getParent() const { return parent_; }
    CXVector* getSubScenes() { return &subScenes_; }
    CXVector* getObjects() const { return objects_.get(); }  // in order of creation; null while not loaded
    int getElementsNo() const { return table_ ? table_->getCount() : 0; }
    const CXString& getBackground() const { return background_; }

    // The object is the scene's from now on, unless it is a level of the tree. One of the same name is found no more,
    // and lives on.
    void addObject(CMC_Object* object);
    // Takes the object out; it is the caller's then. False when it wasn't in the scene.
    bool removeObject(CMC_Object* object);
    // Takes the object out of its scene for good. It is destroyed when no script is running. Null is allowed.
    static void discard(CMC_Object* object);

    CMC_Object* getObject(int index) const;                                 // null outside the scene
    CMC_Object* getObject(const char* name) const { return lookUp(name); }  // here, then in the parents; null: none
    CMC_Object* getObject(const CStringHashCode& name) const { return lookUp(name.view(), name.getHashcode()); }
    CMC_Object* lookUp(std::string_view name) const { return lookUp(name, CStringHashCode::hashOf(name)); }
    int getObjectId(const CXString& name) const;  // index, here alone; -1: none
    CXVector* getObjectsOfType(int type) const;   // a new vector, the caller's
    // The object that the element defines, by itself or by a module; null: none.
    std::unique_ptr<CMC_Object> resolve(CMElement* element);
    // Builds the objects of all elements in five passes. Returns the elements that no pass took, in a new list that
    // doesn't own them.
    CMElements* resolveObjects(CMElements* elements);
    CGraphicsObject* getGraphicsObject(const CXString& name);
    CXString getGraphicsObjectName(CGraphicsObject* graphic);
    int getSubId(CMC_Scene* child) const;
    void setDraggedName(const CXString& name) { draggedName_ = name; }
    const CXString& getDraggedName() const { return draggedName_; }

    std::span<const std::string_view> getBehavioursList() const override;
    void serialize(CXArchive* archive) override;

    // Whether nobody would name an object so: a number, a quoted text, or a sign of a comparison. Such a text is a
    // literal as long as no object bears it as name after all.
    static bool isLiteralName(std::string_view text) {
        if (text.empty()) return false;
        constexpr std::string_view kStarts = "\"-<>!?";
        const char c = text.front();
        return (c >= '0' && c <= '9') || kStarts.find(c) != std::string_view::npos || text == "_";
    }
    // Moves on whenever an object with such a name enters any scene.
    static unsigned literalNameEpoch() { return literalNameEpoch_; }

protected:
    void addChild(CMC_Object* child);  // of the parser; null is passed over
    void setCurrent(CMC_Scene* scene) { current_ = scene; }
    void setPending(CMC_Scene* scene) { pending_ = scene; }
    CMC_Scene* firstChild() const;
    CXVector& history() { return history_; }
    void deleteChildren();  // those that have this level as parent; the others go on
    void loadOwnObjects();  // of an upper level: from its folder, when it is built

private:
    CMC_Object* lookUp(std::string_view name, int hash) const;
    static bool isLevel(const CMC_Object* object);
    void addLevel(CMC_Scene* level);
    void forgetChild(CMC_Scene* child);
    void unloadObjects();

    CXString dlls_, description_, creationTime_, lastModifyTime_, author_, coAuthors_, path_, background_, music_;
    CWindow* window_;
    CUnit6* unit_ = nullptr;
    CXVector subScenes_;
    std::vector<CMC_Scene*> listedBy_;   // the levels that have it among their children, the parent or not
    std::unique_ptr<CXVector> objects_;  // owned, the levels of the tree excepted
    std::unique_ptr<CHashtable> table_;  // name to object
    CMC_Scene* parent_ = nullptr;
    CMC_Scene* current_ = nullptr;
    CMC_Scene* pending_ = nullptr;
    CXVector history_;   // children in the order entered
    CXArray monitored_;  // CGraphicsObject, given to the collision inspector by this scene
    std::vector<std::unique_ptr<CMC_DLLExModuleInterface>> extensions_;
    CXString draggedName_;
    CXString savedUnitName_;
    bool startMusic_ = true;
    bool binary_;

    static inline unsigned literalNameEpoch_ = 1;
};
