// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "foundation/xobject.h"
#include "sound/sequence_element.h"

class CResourcesManager;
class CSpeakingAnimation;

// All that one sequence file has made. It owns the elements, however they hang together and whether or not they hang
// anywhere; sounds and animations are the cache's, if there is one.
class SequenceTree : public CXObject {
public:
    explicit SequenceTree(CPlayableObserver* observer) : observer_(observer) {}
    ~SequenceTree() override;
    SequenceTree(const SequenceTree&) = delete;
    SequenceTree& operator=(const SequenceTree&) = delete;

    // Any kind of element, though mostly a CSequencedPlayable. Null: none of the right name, or a sound that has gone.
    CPlayable* getRoot() const { return root_.get(); }
    void setRoot(CPlayable* root) { root_ = root; }

    void keep(std::unique_ptr<SequenceElement> element) { elements_.push_back(std::move(element)); }
    void keepMedium(std::unique_ptr<CPlayable> medium) { media_.push_back(std::move(medium)); }
    void hear(CPlayable* playable);  // sets the observer as its generic notifier

    // The observer hears nothing more, and no element touches anything any more, though one of them may have called
    // whoever wants this; the tree must live until that call has come back.
    void leave();

private:
    CPlayableObserver* observer_;
    PlayableLink<CPlayable> root_;
    std::vector<PlayableLink<CPlayable>> heard_;
    std::vector<std::unique_ptr<CPlayable>> media_;  // of no cache
    std::vector<std::unique_ptr<SequenceElement>> elements_;
};

// One name of a sequence file.
struct _tse_entry {
    enum Type { kNone, kSimple, kSequence, kSpeaking };

    CXString name;
    int type = kNone;
    CXString fileName;
    CXString event;
    CPlayable* playable = nullptr;  // the tree's or the cache's; null before TYPE, and when nothing came of it
};

// The elements of a sequence file while it is read. What names no element, an element without a playable, or one of
// another type, does nothing.
class CTreeSequenceElements : public CXObject {
public:
    CTreeSequenceElements(CWindow* window, CResourcesManager* resources, SequenceTree* tree);  // null: no cache

    void readLine(const CXString& line);

    void add(const CXString& name);  // unless there is one of that name
    bool contains(const CXString& name) const { return find(name) != nullptr; }
    _tse_entry* find(const CXString& name) const;  // null: none
    CPlayable* create(_tse_entry* entry);          // by its type; null: nothing came of it

    void setType(const CXString& name, const CXString& type);
    void setFileName(const CXString& name, const CXString& fileName);
    void setEvent(const CXString& name, const CXString& event);
    void setPrefix(const CXString& name, const CXString& prefix);
    void setWaitMode(const CXString& name, const CXString& truth);
    void setMode(const CXString& name, const CXString& mode);
    void addSequenceEvent(const CXString& name, const CXString& key, const CXString& value);
    void setAnimoFN(const CXString& name, const CXString& value);
    void setWAVFN(const CXString& name, const CXString& value);
    void setStarting(const CXString& name, const CXString& truth);
    void setEnding(const CXString& name, const CXString& truth);
    void show(const CXString& name);
    void hide(const CXString& name);
    void add(const CXString& child, const CXString& parent);

private:
    CPlayable* createSimple(const _tse_entry& entry);
    CPlayable* playableOf(const CXString& name) const;
    CSpeakingAnimation* speaking(const CXString& name) const;  // null: not of that type

    CWindow* window_;
    CResourcesManager* resources_;
    SequenceTree* tree_;
    std::unordered_map<std::string, std::unique_ptr<_tse_entry>> entries_;
};

// Reads sequence files.
class CMultimediaSequenceCreator {
public:
    // The tree of the file, whose root is the element with the file's pure name; null when there is none. The observer
    // hears every element and must outlive the tree, or have it `leave`.
    static std::unique_ptr<SequenceTree> load(CWindow* window, const CXString& fileName, CResourcesManager* resources,
                                              CPlayableObserver* observer);
    // The digit that selects a child. What has no digit gives "0", which selects none.
    static char getParameter(int child);
};
