// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>
#include <vector>

#include "script/object.h"
#include "script/runner.h"
#include "script/variable.h"

// ARRAY: a growable list of values. It owns copies: what goes in is cloned, and keeps its type.
//
// Changes of single elements are told by ONCHANGED^index, and when nobody listens to that by ONCHANGED, if the array
// is set to send them. A handler may do anything to the array: operations on several elements look at what is there
// when its turn comes, and never go beyond the size that they began with. Indexes outside the array change nothing and
// signal nothing.
class CMC_Array : public CMC_Object {
public:
    using CMC_Object::clone;

    static constexpr int kType = 3001;

    CMC_Array(CMC_Scene* scene, CXString name);
    CMC_Array(CMC_Scene* scene, CMElement* element);
    ~CMC_Array() override;

    virtual CMC_Variable* get(int index);   // null outside the array
    virtual void add(CMC_Variable* value);  // a copy of it
    // The names NAME_from to NAME_to as texts.
    virtual void addClones(CXString name, int from, int to);
    virtual void insertAt(int index, CMC_Variable* value);  // an index of the size appends
    virtual void changeAt(int index, CMC_Variable* value);
    // From here to loadINI nothing is told, except that something was asked.
    virtual void removeAt(int index);
    virtual void removeAll();                  // the marker stays
    virtual void remove(CMC_Variable* value);  // the first element that equals it
    virtual bool contains(CMC_Variable* value) { return find(value) >= 0; }
    virtual int find(CMC_Variable* value);         // the first that equals it, by each element's own rule; -1: none
    virtual int reversefind(CMC_Variable* value);  // the last one
    // The form in the configuration file: the texts joined by commas. They come back as STRINGs, empty ones not at all.
    virtual void saveINI();
    virtual void loadINI();
    virtual int getSize() { return static_cast<int>(values_.size()); }

    // Move the marker by n, round the ends, and give the element there; null, and no move, in an empty array.
    virtual CMC_Variable* prev(int n);
    virtual CMC_Variable* next(int n);
    virtual void resetMarker() { marker_ = -1; }
    virtual int getMarkerPos() { return marker_; }
    virtual void setMarkerPos(int pos);  // held between -1 and size - 1

    // Of every element with the value.
    virtual void sum(CMC_Variable* value);
    virtual void sub(CMC_Variable* value);
    virtual void mul(CMC_Variable* value);
    virtual void div(CMC_Variable* value);
    // Of the elements from `from` up to and including `to` with those of the named array at the same indexes; where
    // that has none, nothing happens. -1 stands for the first, or the last.
    virtual void suma(CXString array, int from, int to);
    virtual void suba(CXString array, int from, int to);
    virtual void mula(CXString array, int from, int to);
    virtual void diva(CXString array, int from, int to);
    // Of one element with the value.
    virtual void mulat(int index, CMC_Variable* value);
    virtual void divat(int index, CMC_Variable* value);
    virtual void addat(int index, CMC_Variable* value);
    virtual void subat(int index, CMC_Variable* value);
    virtual void modat(int index, CMC_Variable* value);

    virtual void swap(int i, int j);
    // By the elements' `compare`; equal ones keep their order, and have it reversed when descending. Tells nothing.
    virtual void sort(bool ascending);
    // The file form: the number of elements, then each as `store` writes it. A file that can't be opened leaves the
    // array empty, one that is cut short what stands before the cut. Tells nothing.
    virtual void load(CXString fileName);
    virtual void save(CXString fileName);
    virtual bool compareArr(CMC_Array* other);  // of the same size, and each element equals the other's

    // Each moves all elements by one place. The one that comes round the end takes the zero of its type in a shift.
    void shiftLeft();
    void shiftRight();
    void rotateLeft();
    void rotateRight();

    // Hold an INTEGER or a DOUBLE between both; other types stay. Tells nothing.
    void clampAt(int index, CMC_Variable* low, CMC_Variable* high);
    void addFiles(CXString path, CXString pattern);  // the names of files, with the path in front as it was given
    void join(CMC_Object* object);                   // a copy of its value; no effect for an object that has none
    void setSendOnChange(bool sends) { sendOnChange_ = sends; }
    int getMin();       // of the INTEGER elements and 1000000
    int getMax();       // of the INTEGER elements and 0
    int getSumValue();  // of the INTEGER elements

    CXObject* clone() override;  // "cloned", with copies of the elements
    CXString toString() override;
    std::span<const std::string_view> getBehavioursList() const override;
    void serialize(CXArchive* archive) override;

private:
    class Telling;

    void append(CMC_Variable* value);
    bool holds(int index) const { return index >= 0 && static_cast<std::size_t>(index) < values_.size(); }
    CMC_Variable* moveMarker(std::int64_t to);
    void calculate(int index, CMC_Variable* value, Operation op);  // within a Telling
    void calculateAt(int index, CMC_Variable* value, Operation op);
    void calculateAll(CMC_Variable* value, Operation op);
    void calculateWith(const CXString& array, int from, int to, Operation op);
    void rotate(bool left, bool clears);
    void onChanged(int index);
    void onAllChanged();

    std::vector<std::unique_ptr<CMC_Variable>> values_;
    int marker_ = -1;
    bool sendOnChange_ = false;
    int tellings_ = 0;        // operations that tell changes, one within the handlers of the other
    bool isRunaway_ = false;  // too deep in one another: nothing is told until the outermost one ends
};

class CMC_Array_Runner : public CMC_Runner {
public:
    void prepareMthHashSet() override;
};
