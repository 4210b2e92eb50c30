// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "structure/application.h"

#include "definition/element.h"
#include "definition/structure_parser.h"
#include "foundation/string_tokenizer.h"
#include "frame/language.h"
#include "frame/window.h"
#include "platform/platform.h"
#include "script/behaviour.h"
#include "script/lifetime.h"
#include "script/method_table.h"
#include "script/runner_factory.h"
#include "structure/scene_runner.h"

namespace {

CMC_Application* application(const MethodCall& c) { return static_cast<CMC_Application*>(c.object); }

CMC_Variable* goTo(const MethodCall& c) {
    application(c)->_goto(c.text(0));
    return nullptr;
}

CMC_Variable* setLanguage(const MethodCall& c) {
    CLanguageOSVer::setLanguageFolder(c.text(0).c_str());
    return nullptr;
}

CMC_Variable* getLanguage(const MethodCall&) { return toScript(CLanguageOSVer::getLanguageFolder()); }

// There is no printer: the call returns.
CMC_Variable* print(const MethodCall&) { return nullptr; }

CMC_Variable* enableMusic(const MethodCall& c) { return application(c)->getWindow()->MusicOn(true), nullptr; }
CMC_Variable* disableMusic(const MethodCall& c) { return application(c)->getWindow()->MusicOn(false), nullptr; }

CMC_Variable* run(const MethodCall& c) {
    return runNamed(c, [](const CXString& method, const char* word) { return method.equalsIgnoreCase(word); });
}

// Of several applications in a definition the last one runs, yet all of them need the runners to their end.
int applications = 0;

constexpr MethodRow kMethods[] = {
    {1,  "EXIT",         bind<&CMC_Application::exit>       },
    {2,  "RESTART",      bind<&CMC_Application::restart>    },
    {3,  "GOTO",         {goTo, "s"}                        },
    {4,  "SETLANGUAGE",  {setLanguage, "s"}                 },
    {5,  "GETLANGUAGE",  {getLanguage, ""}                  },
    {6,  "PRINT",        {print, "*"}                       },
    {7,  "ENABLEMUSIC",  {enableMusic, ""}                  },
    {8,  "DISABLEMUSIC", {disableMusic, ""}                 },
    {9,  "RUN",          {run, "ss*"}                       },
    {10, "STOREBINARY",  bind<&CMC_Application::storeBinary>},
};
static_assert(isMethodTable(kMethods));

}  // namespace

CVersionizer CMC_Application::version(7, 2, 1);

CMC_Application::CMC_Application(CWindow* window) : CMC_Scene(window, kType) {
    ++applications;
    CMC_Behaviour::initTrash();
    CMC_VariableFactory::initialize();
    CMC_RunnerFactory::initialize();
    platform::current().shell.debugOutput("application.bin: the binary form is not built yet, nothing is read");
}

CMC_Application::CMC_Application(CWindow* window, CMC_StructureParser* parser, CMElement* element,
                                 CCommandLine6* commandLine)
    : CMC_Scene(window, nullptr, element, kType), commandLine_(commandLine) {
    ++applications;
    CMC_Behaviour::initTrash();
    CStringTokenizer names(element->getPropertyValue("EPISODES"), ", ");
    while (names.hasMoreTokens())
        addChild(parser->get(names.nextToken()));
    const CXString start = element->getPropertyValue("STARTWITH");
    if (start.IsString()) startEpisode_ = static_cast<CMC_Scene*>(parser->get(start));
    if (startEpisode_ == nullptr) startEpisode_ = firstChild();
    CMC_RunnerFactory::initialize();
    loadOwnObjects();
}

CMC_Application::~CMC_Application() {
    if (getCurrentScene()) CMC_Application::unload(nullptr);
    startEpisode_ = nullptr;  // last handlers may ask for a restart
    deleteChildren();
    // All script that unloading may still run needs the runners: this level's own objects go first.
    CMC_Scene::unload(nullptr);
    if (--applications > 0) return;
    CMC_RunnerFactory::done();
    CMC_Behaviour::doneTrash();
}

bool CMC_Application::initialize(CMC_Scene*) {
    onInit();
    if (startEpisode_ == nullptr) return false;
    _goto(startEpisode_, nullptr);
    return true;
}

void CMC_Application::domodal() {
    CMC_Behaviour::flushTrash();
    CMC_Scene::domodal();
}

void CMC_Application::unload(CMC_Scene* next) {
    CMC_Scene* episode = getCurrentScene();
    if (episode == nullptr) return;
    onSignal("ONDONE");
    episode->unload(next);
    setCurrent(nullptr);
}

void CMC_Application::restart() {
    if (startEpisode_ == nullptr) return;
    if (CMC_Scene* episode = getCurrentScene(); episode != startEpisode_) {
        const ScriptScope scope;
        if (episode) episode->unload(episode);
        setCurrent(startEpisode_);
        startEpisode_->initialize(startEpisode_);
    } else {
        startEpisode_->restart();
    }
}

void CMC_Application::exit() {
    getWindow()->quit();
    onSignal("ONEXIT");
}

void CMC_Application::storeBinary() {
    platform::current().shell.debugOutput("application.bin: the binary form is not built yet, nothing is written");
}

void CMC_Application_Runner::prepareMthHashSet() {
    CMC_Runner::prepareMthHashSet();
    enterMethods(kMethods);
}
