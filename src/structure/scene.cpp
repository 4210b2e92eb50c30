// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "structure/scene.h"

#include <algorithm>
#include <array>

#include "animation/animo.h"
#include "animation/animo_object.h"
#include "animation/canvas_observer_object.h"
#include "animation/image.h"
#include "animation/image_object.h"
#include "definition/element.h"
#include "foundation/string_tokenizer.h"
#include "frame/extension_module.h"
#include "frame/unit.h"
#include "frame/window.h"
#include "graphics/collision_inspector.h"
#include "graphics/refresh_screen.h"
#include "input/button.h"
#include "input/button_object.h"
#include "script/array.h"
#include "script/behaviour.h"
#include "script/lifetime.h"
#include "script/string.h"
#include "sound/sequence_object.h"
#include "storage/archive.h"
#include "structure/application.h"
#include "text/multiline_text.h"
#include "text/text_object.h"

namespace {

constexpr std::array<std::string_view, 6> kSignals = {"ONINIT",    "ONDONE",    "ONSIGNAL",
                                                      "ONDOMODAL", "ONRESTART", "ONMUSICLOOPED"};

// Null for what shows nothing.
CGraphicsObject* graphicOf(const CMC_Object* object) {
    const int type = object ? object->getType() : 0;
    if (type == CMC_Text::kType) return static_cast<const CMC_Text*>(object)->getText();
    const bool isPicture = type == CMC_Animo::kType || type == CMC_Image::kType;
    return isPicture ? static_cast<const CMC_Picture*>(object)->getGraphic() : nullptr;
}

}  // namespace

CMC_Scene::CMC_Scene(CWindow* window, int type) : CMC_Object("", type), window_(window), binary_(true) {}

CMC_Scene::CMC_Scene(CWindow* window, CMC_Scene* parent, CMElement* element, int type)
    : CMC_Object(nullptr, element, type),
      dlls_(element->getPropertyValue("DLLS")),
      description_(element->getPropertyValue("DESCRIPTION")),
      creationTime_(element->getPropertyValue("CREATIONTIME")),
      lastModifyTime_(element->getPropertyValue("LASTMODIFYTIME")),
      author_(element->getPropertyValue("AUTHOR")),
      coAuthors_(element->getPropertyValue("COAUTHORS")),
      path_(element->getPropertyValue("PATH")),
      background_(element->getPropertyValue("BACKGROUND")),
      music_(element->getPropertyValue("MUSIC")),
      window_(window),
      parent_(parent),
      binary_(false) {}

CMC_Scene::~CMC_Scene() {
    for (CMC_Scene* level : listedBy_)
        level->forgetChild(this);
    CMC_Scene::unload(nullptr);
    if (CCollisionInspector* inspector = window_->getCollisionInspectorInterface())
        for (void* object : monitored_.elements())
            inspector->removeMonitoredObject(static_cast<CGraphicsObject*>(object));
}

std::span<const std::string_view> CMC_Scene::getBehavioursList() const { return kSignals; }

void CMC_Scene::addObject(CMC_Object* object) {
    if (object == nullptr) return;
    if (!table_) {
        // The scene was left while its own code made the object.
        if (isLevel(object)) return;
        object->retire();
        return destroyLater(std::unique_ptr<CXObject>(object));
    }
    const CXString& name = object->getName();
    if (isLiteralName(name.view())) ++literalNameEpoch_;
    if (object->getScene() == nullptr && !isLevel(object)) object->setScene(this);
    auto* key = new CStringHashCode(name);
    if (auto* former = static_cast<CMC_Object*>(table_->get(key))) {
        table_->remove(key, former);
        if (former != object) former->displace();
    }
    table_->put(key, object);
    objects_->add(object);
}

bool CMC_Scene::removeObject(CMC_Object* object) {
    if (!table_ || !objects_->contains(object)) return false;
    objects_->remove(object);
    const CStringHashCode key(object->getName());
    if (!object->isDisplaced() || isLevel(object)) table_->remove(&key, object);
    return true;
}

void CMC_Scene::discard(CMC_Object* object) {
    // A level of the tree stands in its scenes' tables and outlives them.
    if (object == nullptr || object->isRetired() || isLevel(object)) return;
    if (CMC_Scene* scene = object->getScene()) scene->removeObject(object);
    object->retire();
    std::unique_ptr<CMC_Object> dying(object);
    if (object->getType() == CMC_Behaviour::kType) {
        auto* block = static_cast<CMC_Behaviour*>(object);
        if (block->isHeld()) return static_cast<void>(dying.release());  // dies with its last holder
        if (block->diesAtOnce()) return;
    }
    destroyLate(std::move(dying));
}

CMC_Object* CMC_Scene::getObject(int index) const {
    return objects_ ? static_cast<CMC_Object*>(objects_->at(index)) : nullptr;
}

CMC_Object* CMC_Scene::lookUp(std::string_view name, int hash) const {
    for (const CMC_Scene* scene = this; scene; scene = scene->parent_)
        if (scene->table_)
            if (CXObject* object = valueNamed(*scene->table_, name, hash)) return static_cast<CMC_Object*>(object);
    return nullptr;
}

int CMC_Scene::getObjectId(const CXString& name) const {
    for (int i = 0; objects_ && i < objects_->size(); ++i)
        if (getObject(i)->getName() == name) return i;
    return -1;
}

CXVector* CMC_Scene::getObjectsOfType(int type) const {
    auto* found = new CXVector;
    for (int i = 0; objects_ && i < objects_->size(); ++i)
        if (getObject(i)->getType() == type) found->add(getObject(i));
    return found;
}

// The part behind a `#` names a frame of an animation.
CGraphicsObject* CMC_Scene::getGraphicsObject(const CXString& name) {
    const std::size_t mark = name.view().find('#');
    const std::string_view objectName = name.view().substr(0, mark);
    CMC_Object* object = objectName.empty() ? nullptr : lookUp(objectName);
    if (object && object->getType() == CMC_CanvasObserver::kType) return window_->GetRefreshScreenInterface();
    if (!object) return nullptr;
    if (mark == std::string_view::npos || object->getType() != CMC_Animo::kType) return graphicOf(object);
    const CAnimo6* animo = static_cast<CMC_Animo*>(object)->getAnimo();
    return animo ? animo->getFrame(CXString(name.view().substr(mark + 1))) : nullptr;
}

CXString CMC_Scene::getGraphicsObjectName(CGraphicsObject* graphic) {
    if (!table_ || !graphic) return "UNKNOWN";
    for (CXObject* entry : table_->getAllValues()->elements()) {
        auto* object = static_cast<CMC_Object*>(entry);
        if (graphicOf(object) == graphic) return object->getName();
    }
    return "UNKNOWN";
}

int CMC_Scene::getSubId(CMC_Scene* child) const { return subScenes_.find(child); }

CMC_Application* CMC_Scene::getMCApplication() { return parent_ ? parent_->getMCApplication() : nullptr; }

CResourcesManager* CMC_Scene::getResources() const { return unit_ ? unit_->getResourcesManager() : nullptr; }

CMC_Scene* CMC_Scene::find(const CXString& name) const {
    for (CXObject* object : subScenes_.elements())
        if (auto* scene = static_cast<CMC_Scene*>(object); scene->getName() == name) return scene;
    return nullptr;
}

CMC_Scene* CMC_Scene::firstChild() const { return static_cast<CMC_Scene*>(subScenes_.at(0)); }

void CMC_Scene::addChild(CMC_Object* child) {
    if (child == nullptr) return;
    auto* scene = static_cast<CMC_Scene*>(child);
    scene->setParent(this);
    subScenes_.add(scene);
    scene->listedBy_.push_back(this);
}

void CMC_Scene::forgetChild(CMC_Scene* child) {
    while (subScenes_.contains(child))
        subScenes_.remove(child);
    while (history_.contains(child))
        history_.remove(child);
    if (current_ == child) current_ = nullptr;
    if (pending_ == child) pending_ = nullptr;
}

// A scene that two levels list, or one level twice, belongs to the level that it has as parent.
void CMC_Scene::deleteChildren() {
    while (!subScenes_.isEmpty()) {
        auto* child = static_cast<CMC_Scene*>(subScenes_.at(0));
        std::erase(child->listedBy_, this);
        forgetChild(child);
        if (child->getParent() == this) delete child;
    }
    current_ = nullptr;
    pending_ = nullptr;
    history_.removeAll();
}

void CMC_Scene::domodal() {
    if (CMC_Scene* next = pending_) {
        // Cleared first: the scene that is entered may ask for another one.
        pending_ = nullptr;
        _goto(next, current_);
    }
    if (current_) current_->domodal();
}

void CMC_Scene::_goto(CMC_Scene* next, CMC_Scene* old) {
    unload(next);
    current_ = next;
    next->initialize(old);
    history_.add(next);
}

void CMC_Scene::_goto(const CXString& name) { pending_ = find(name); }

void CMC_Scene::restart() {
    if (CMC_Scene* first = firstChild()) pending_ = first;
    if (getBehaviour("ONRESTART")) onSignal("ONRESTART");
}

void CMC_Scene::startMusic() {
    if (unit_) unit_->startMusic();
}

void CMC_Scene::stopMusic() {
    if (unit_) unit_->stopMusic();
}

CXString CMC_Scene::getMusicFilename() const {
    if (music_.IsString()) return music_;
    return parent_ ? parent_->getMusicFilename() : CXString();
}

void CMC_Scene::monitorCollisions(CGraphicsObject* object, bool alpha, CCollisionObserver* observer) {
    CCollisionInspector* inspector = window_->getCollisionInspectorInterface();
    inspector->addNotifier(observer);
    inspector->addMonitoredObject(object, alpha);
    monitored_.add(object);
}

void CMC_Scene::removeMonitorCollisions(CGraphicsObject* object, CCollisionObserver* observer) {
    CCollisionInspector* inspector = window_->getCollisionInspectorInterface();
    inspector->removeNotifier(observer);
    inspector->removeMonitoredObject(object);
    while (monitored_.contains(object))
        monitored_.remove(object);
}

// The names are taken first: what enters an array may be told to scripts.
void CMC_Scene::getPlayingSeq(CMC_Array* names) {
    std::vector<CXString> playing;
    if (!table_) return;
    for (CXObject* entry : table_->getAllValues()->elements()) {
        auto* object = static_cast<CMC_Object*>(entry);
        if (object->getType() == CMC_Sequence::kType && static_cast<CMC_Sequence*>(object)->isPlaying())
            playing.push_back(object->getName());
    }
    const ScriptScope scope;
    const Ref<CMC_Array> target(names);
    for (const CXString& name : playing) {
        CMC_String value("temp", name);
        if (target) target->add(&value);
    }
}

// BUTTON is the one word that makes something, once there are buttons.
CMC_Object* CMC_Scene::createObject(const CXString& type, const CXString& name) {
    if (type != "BUTTON" || !table_) return nullptr;
    auto button = std::make_unique<CButton>(window_, -1, nullptr, 0);
    if (unit_) button->addNotifier(unit_);
    button->SetDeleteFlags(false, false);  // what scripts give it is the scene's
    button->Enable(true);
    auto* object = new CMC_Button(this, std::move(button), name);
    addObject(object);
    return object;
}

void CMC_Scene::resolveDLLs(const CXString& names) {
    CStringTokenizer tokens(names, ",");
    while (tokens.hasMoreTokens())
        extensions_.push_back(
            std::make_unique<CMC_DLLExModuleInterface>(CWindow::getEXEPath() + tokens.nextToken(), this));
}

// Behind the objects that the modules made, which may still have to wait for the end of the running script.
void CMC_Scene::doneDLLs() {
    for (auto& extension : extensions_)
        destroyLate(std::move(extension));
    extensions_.clear();
}

CMC_Object* CMC_Scene::resolveEx(CMElement* element) {
    for (const auto& extension : extensions_)
        if (CMC_ExternObject* module = extension->getInterface())
            if (CMC_Object* object = module->resolveEx(element)) return object;
    return nullptr;
}

CMC_Object* CMC_Scene::serializeEx(CXArchive* archive, int type) {
    for (const auto& extension : extensions_)
        if (CMC_ExternObject* module = extension->getInterface())
            if (CMC_Object* object = module->serializeEx(archive, type)) return object;
    return nullptr;
}

void CMC_Scene::serialize(CXArchive* archive) {
    CMC_Object::serialize(archive);
    if (archive->isStoring())
        *archive << path_;
    else
        *archive >> path_;
}

bool CMC_Scene::isLevel(const CMC_Object* object) {
    const int type = object->getType();
    return type >= CMC_Application::kType && type <= CMC_Scene::kType;
}
