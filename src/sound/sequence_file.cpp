// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "sound/sequence_file.h"

#include <algorithm>
#include <iterator>
#include <optional>

#include "animation/animo.h"
#include "animation/animo_object.h"
#include "foundation/string_tokenizer.h"
#include "frame/window.h"
#include "graphics/refresh_screen.h"
#include "sound/animo_event.h"
#include "sound/sequence.h"
#include "sound/sequence_media.h"
#include "sound/sound.h"
#include "sound/speaking_animation.h"
#include "storage/file.h"
#include "storage/file_name_resolver.h"

namespace {

constexpr int kReadMode = 1;
constexpr char kSeparators[] = " =\n:";
constexpr char kDefaultParent[] = "ROOT";

struct Word {
    std::string_view text;
    int value;
};
constexpr Word kTypes[] = {
    {"SIMPLE",   _tse_entry::kSimple  },
    {"SEQUENCE", _tse_entry::kSequence},
    {"SPEAKING", _tse_entry::kSpeaking}
};
constexpr Word kModes[] = {
    {"SEQUENCE",  CSequencedPlayable::kInTurn     },
    {"RANDOM",    CSequencedPlayable::kRandom     },
    {"PARAMETER", CSequencedPlayable::kByParameter}
};
constexpr Word kTruths[] = {
    {"TRUE",  1},
    {"FALSE", 0}
};

std::optional<int> valueOf(std::span<const Word> words, const CXString& text) {
    const auto word = std::ranges::find(words, text.view(), &Word::text);
    return word == words.end() ? std::nullopt : std::optional(word->value);
}

using Elements = CTreeSequenceElements;

struct Property {
    std::string_view name;
    void (*set)(Elements&, const CXString& element, CStringTokenizer& rest);
};

template <void (Elements::*Set)(const CXString&, const CXString&)>
void withValue(Elements& elements, const CXString& element, CStringTokenizer& rest) {
    (elements.*Set)(element, rest.nextToken());
}

template <void (Elements::*Set)(const CXString&)>
void alone(Elements& elements, const CXString& element, CStringTokenizer&) {
    (elements.*Set)(element);
}

void type(Elements& elements, const CXString& element, CStringTokenizer& rest) {
    elements.setType(element, rest.nextToken());
}

void addToParent(Elements& elements, const CXString& element, CStringTokenizer& rest) {
    const CXString parent = rest.nextToken();
    elements.add(element, parent.IsString() ? parent : CXString(kDefaultParent));
}

void sequenceEvent(Elements& elements, const CXString& element, CStringTokenizer& rest) {
    const CXString key = rest.nextToken();
    elements.addSequenceEvent(element, key, rest.nextToken());
}

constexpr Property kProperties[] = {
    {"FILENAME", withValue<&Elements::setFileName>},
    {"EVENT",    withValue<&Elements::setEvent>   },
    {"TYPE",     type                             },
    {"MODE",     withValue<&Elements::setMode>    },
    {"ADD",      addToParent                      },
    {"SEQEVENT", sequenceEvent                    },
    {"WAIT",     withValue<&Elements::setWaitMode>},
    {"SHOW",     alone<&Elements::show>           },
    {"HIDE",     alone<&Elements::hide>           },
    {"ANIMOFN",  withValue<&Elements::setAnimoFN> },
    {"WAVFN",    withValue<&Elements::setWAVFN>   },
    {"STARTING", withValue<&Elements::setStarting>},
    {"ENDING",   withValue<&Elements::setEnding>  },
    {"PREFIX",   withValue<&Elements::setPrefix>  },
};

}  // namespace

// Elements first: they let go of what nobody else holds.
SequenceTree::~SequenceTree() {
    leave();
    elements_.clear();
}

void SequenceTree::hear(CPlayable* playable) {
    playable->setGenericNotifier(observer_);
    heard_.emplace_back(playable);
}

void SequenceTree::leave() {
    for (const auto& link : heard_)
        if (CPlayable* playable = link.get()) playable->dropGenericNotifier(observer_);
    heard_.clear();
    for (const auto& element : elements_)
        element->leave();
}

CTreeSequenceElements::CTreeSequenceElements(CWindow* window, CResourcesManager* resources, SequenceTree* tree)
    : window_(window), resources_(resources), tree_(tree) {}

void CTreeSequenceElements::readLine(const CXString& line) {
    if (line.GetAt(0) == '#') return;
    CStringTokenizer tokens(line, kSeparators);
    const CXString first = tokens.nextToken(), second = tokens.nextToken();
    if (first == "NAME") return add(second);
    const auto* property = std::ranges::find(kProperties, second.view(), &Property::name);
    if (property != std::end(kProperties) && contains(first)) property->set(*this, first, tokens);
}

void CTreeSequenceElements::add(const CXString& name) {
    if (!name.IsString() || contains(name)) return;
    auto entry = std::make_unique<_tse_entry>();
    entry->name = name;
    entries_.emplace(name.view(), std::move(entry));
}

_tse_entry* CTreeSequenceElements::find(const CXString& name) const {
    const auto at = entries_.find(std::string(name.view()));
    return at == entries_.end() ? nullptr : at->second.get();
}

CPlayable* CTreeSequenceElements::playableOf(const CXString& name) const {
    const _tse_entry* entry = find(name);
    return entry ? entry->playable : nullptr;
}

CSpeakingAnimation* CTreeSequenceElements::speaking(const CXString& name) const {
    CPlayable* playable = playableOf(name);
    const bool fits = playable && playable->getType() == CSpeakingAnimation::kType;
    return fits ? static_cast<CSpeakingAnimation*>(playable) : nullptr;
}

CPlayable* CTreeSequenceElements::create(_tse_entry* entry) {
    CPlayable* playable = nullptr;
    if (entry->type == _tse_entry::kSimple) {
        playable = createSimple(*entry);
    } else {
        std::unique_ptr<SequenceElement> element;
        if (entry->type == _tse_entry::kSequence) element = std::make_unique<CSequencedPlayable>(window_);
        if (entry->type == _tse_entry::kSpeaking) element = std::make_unique<CSpeakingAnimation>(window_, resources_);
        playable = element.get();
        if (element) tree_->keep(std::move(element));
    }
    if (playable) tree_->hear(playable);
    return playable;
}

CPlayable* CTreeSequenceElements::createSimple(const _tse_entry& entry) {
    const auto eventOf = [&entry](const CAnimo& animation) {
        const int event = animation.resolveEventName(entry.event);
        return event != -1 ? event : CXString::toNumber(entry.event);
    };
    const auto keep = [this](std::unique_ptr<SequenceElement> leaf) {
        CPlayable* playable = leaf.get();
        tree_->keep(std::move(leaf));
        return playable;
    };

    if (CMC_Animo* object = media::sceneAnimo(window_, entry.fileName)) {
        const int event = eventOf(*object->getAnimo());
        return keep(std::make_unique<CAnimoEventPlayable>(window_, object, event));
    }
    const CXString extension = CFileNameResolver(entry.fileName).getExtension();
    if (extension == "ANN") {
        CAnimo* animation = nullptr;
        bool isNew = true;
        if (resources_) {
            animation = media::cachedAnimo(window_, resources_, entry.fileName, isNew);
        } else {
            auto made = std::make_unique<CAnimo>(window_, entry.fileName);
            animation = made.get();
            tree_->keepMedium(std::move(made));
        }
        if (isNew) media::putOnScreen(window_, animation);
        return keep(std::make_unique<CAnimoEventPlayable>(window_, animation, eventOf(*animation)));
    }
    if (extension == "WAV") {
        const CXString fullName = window_->GetSoundFXFullPath(entry.fileName);
        if (resources_) return media::cachedSound(window_, resources_, fullName);
        auto sound = std::make_unique<CSound4>(window_, fullName, true, false);
        CPlayable* playable = sound.get();
        tree_->keepMedium(std::move(sound));
        return playable;
    }
    return nullptr;
}

void CTreeSequenceElements::setType(const CXString& name, const CXString& type) {
    _tse_entry* entry = find(name);
    const std::optional<int> value = valueOf(kTypes, type);
    if (!entry || !value) return;
    entry->type = *value;
    entry->playable = create(entry);
    if (entry->playable) entry->playable->setName(name);
}

void CTreeSequenceElements::setFileName(const CXString& name, const CXString& fileName) {
    if (_tse_entry* entry = find(name)) entry->fileName = fileName;
}

void CTreeSequenceElements::setEvent(const CXString& name, const CXString& event) {
    if (_tse_entry* entry = find(name)) entry->event = event;
}

void CTreeSequenceElements::setPrefix(const CXString& name, const CXString& prefix) {
    if (CSpeakingAnimation* speech = speaking(name)) speech->setPrefix(prefix);
}

void CTreeSequenceElements::setWaitMode(const CXString& name, const CXString& truth) {
    CPlayable* playable = playableOf(name);
    const std::optional<int> value = valueOf(kTruths, truth);
    if (playable && value) playable->setWaitMode(*value != 0);
}

void CTreeSequenceElements::setMode(const CXString& name, const CXString& mode) {
    CPlayable* playable = playableOf(name);
    const std::optional<int> value = valueOf(kModes, mode);
    if (playable && value && playable->getType() == CSequencedPlayable::kType) playable->setMode(*value);
}

void CTreeSequenceElements::addSequenceEvent(const CXString& name, const CXString& key, const CXString& value) {
    if (CPlayable* playable = playableOf(name)) playable->addEvent(key, value);
}

void CTreeSequenceElements::setAnimoFN(const CXString& name, const CXString& value) {
    if (CSpeakingAnimation* speech = speaking(name)) speech->setAnimation(value);
}

void CTreeSequenceElements::setWAVFN(const CXString& name, const CXString& value) {
    CSpeakingAnimation* speech = speaking(name);
    if (!speech) return;
    if (contains(value)) {
        speech->apply(playableOf(value));
    } else if (CSound4* sound = media::sceneSound(window_, value)) {
        speech->apply(sound);
    } else {
        speech->apply(window_->GetSoundFXFullPath(value));
    }
}

void CTreeSequenceElements::setStarting(const CXString& name, const CXString& truth) {
    CSpeakingAnimation* speech = speaking(name);
    const std::optional<int> value = valueOf(kTruths, truth);
    if (speech && value) speech->setStarting(*value != 0);
}

void CTreeSequenceElements::setEnding(const CXString& name, const CXString& truth) {
    CSpeakingAnimation* speech = speaking(name);
    const std::optional<int> value = valueOf(kTruths, truth);
    if (speech && value) speech->setEnding(*value != 0);
}

void CTreeSequenceElements::show(const CXString& name) {
    const _tse_entry* entry = find(name);
    if (entry && entry->playable && entry->type != _tse_entry::kSequence) entry->playable->show();
}

void CTreeSequenceElements::hide(const CXString& name) {
    const _tse_entry* entry = find(name);
    if (entry && entry->playable && entry->type != _tse_entry::kSequence) entry->playable->hide();
}

void CTreeSequenceElements::add(const CXString& child, const CXString& parent) {
    CPlayable* above = playableOf(parent);
    CPlayable* below = playableOf(child);
    if (above && below) above->addChild(below);
}

std::unique_ptr<SequenceTree> CMultimediaSequenceCreator::load(CWindow* window, const CXString& fileName,
                                                               CResourcesManager* resources,
                                                               CPlayableObserver* observer) {
    auto tree = std::make_unique<SequenceTree>(observer);
    CTreeSequenceElements elements(window, resources, tree.get());
    CFile file(window, fileName, kReadMode);
    while (!file.eof())
        elements.readLine(file.getLine());

    const _tse_entry* entry = elements.find(CFileNameResolver(fileName).getPureFileName());
    CPlayable* root = entry ? entry->playable : nullptr;
    if (!root) return nullptr;
    // A sound goes by the name of its own file.
    if (root->getType() != CSound4::kType) root->setFilename(fileName);
    if (root->getType() == CSequencedPlayable::kType) static_cast<CSequencedPlayable*>(root)->breakCircles();
    tree->setRoot(root);
    return tree;
}

// ORDER: digits
char CMultimediaSequenceCreator::getParameter(int child) {
    constexpr std::string_view kDigits = "123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    return child >= 0 && child < std::ssize(kDigits) ? kDigits[static_cast<std::size_t>(child)] : '0';
}
