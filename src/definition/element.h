// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>
#include <string_view>
#include <unordered_map>

#include "foundation/xvector.h"
#include "graphics/geometry.h"

class CMElements;

// A named text of an element, and its typed readings.
class CMProperty : public CXObject {
public:
    CMProperty(CXString name, CXString value) : name_(std::move(name)), value_(std::move(value)) {}

    const CXString& getName() const { return name_; }
    void setName(const CXString& name) { name_ = name; }
    const CXString& getValue() const { return value_; }
    void setValue(const CXString& value) { value_ = value; }

    int getIntValue() const { return value_.operator int(); }  // the leading number, or 0
    bool getBoolValue() const { return value_.toBool(); }      // "TRUE" in any case of letters
    double getDoubleValue() const { return value_.toDouble(); }
    CXArray* getListValue() const { return value_.toVector(); }  // a new array of new texts
    CXPoint getPointValue() const;                               // two numbers between commas and blanks
    CXRect getRectValue() const;                                 // four of them: left, top, right, bottom

    bool equals(const CXObject* other) const override;  // by name; `other` must be a CMProperty

private:
    CXString name_;
    CXString value_;
};

// The properties of an element in the order of the file, owned. Of several with one name, lookups find the first.
class CMProperties : public CXVector {
public:
    CMProperties() : CXVector(12, 0.75F) {}
    ~CMProperties() override { CMProperties::removeAll(); }

    CMProperty* get(const CXString& name) const { return lookUp(name.view()); }  // null: none
    CMProperty* lookUp(std::string_view name) const;
    using CXVector::contains;
    bool contains(const CXString& name) const { return get(name) != nullptr; }
    CMProperty* getAt(int i) const { return static_cast<CMProperty*>(at(i)); }

    void remove(const CXObject* property) override;  // deletes it
    void removeAt(int i) override;                   // deletes it
    void removeAll() override;                       // deletes them
};

// An element of a definition file: a name, its properties, and child elements that belong to the file's list.
//
// A getter of a missing property gives the empty value of its type. Names are compared exactly.
class CMElement : public CXObject {
public:
    explicit CMElement(CXString name);
    ~CMElement() override;

    const CXString& getName() const { return name_; }
    CMProperties* getProperties() { return &properties_; }
    const CMProperties* getProperties() const { return &properties_; }
    CMElements* getChildren();  // owns none of them
    void addChild(CMElement* child);

    CXString getPropertyValue(const CXString& name) const;
    int getPropertyIntValue(const CXString& name) const;
    bool getPropertyBoolValue(const CXString& name) const;
    double getPropertyDoubleValue(const CXString& name) const;
    CXArray* getPropertyListValue(const CXString& name) const;  // a new array of new texts; null: no such property
    CXPoint getPropertyPointValue(const CXString& name) const;
    CXRect getPropertyRectValue(const CXString& name) const;
    bool isPropertyAvailable(const CXString& name) const { return properties_.contains(name); }
    bool hasProperty(const CXString& name) const;  // finds upper-case properties alone, in whatever case asked for

    void addProperty(const CXString& name);                         // empty, unless one of that name exists
    void addProperty(const CXString& name, const CXString& value);  // always, behind one of that name if there is one
    void setProperty(const CXString& name, const CXString& value);  // no effect when there is none
    void removeProperty(const CXString& name);
    void removeAll() { properties_.removeAll(); }

private:
    CXString name_;
    CMProperties properties_;
    std::unique_ptr<CMElements> children_;  // made when first asked for
};

// A list of elements, whose names don't change while they are in it. Of several with one name, `get` finds the first,
// through an index.
class CMElements : public CXVector {
public:
    explicit CMElements(bool ownsElements) : ownsElements_(ownsElements) {}
    ~CMElements() override { CMElements::removeAll(); }

    CMElement* get(const CXString& name) const { return lookUp(name.view()); }  // null: none
    CMElement* lookUp(std::string_view name) const;
    using CXVector::contains;
    bool contains(const CXString& name) const { return get(name) != nullptr; }
    CMElement* getAt(int i) const { return static_cast<CMElement*>(at(i)); }
    bool ownsElements() const { return ownsElements_; }

    // What leaves an owning list by one of these is deleted; by `setAt` and `replace` it isn't.
    void remove(const CXObject* element) override;
    void removeAt(int i) override;
    void removeAll() override;

    CXObject* setAt(int i, CXObject* element) override;
    bool replace(const CXObject* old, CXObject* by) override;
    void insertAt(int i, CXObject* element) override;

private:
    void forgetIndex() const;

    bool ownsElements_;
    // The first element of each name among the first `indexed_` ones; lookups extend it. The keys look into the
    // elements.
    mutable std::unordered_map<std::string_view, CMElement*> index_;
    mutable int indexed_ = 0;
};
