// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "script/array.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "definition/element.h"
#include "foundation/string_tokenizer.h"
#include "frame/config.h"
#include "frame/window.h"
#include "script/lifetime.h"
#include "script/method_table.h"
#include "storage/archive.h"
#include "storage/file.h"
#include "storage/folder.h"
#include "storage/path.h"
#include "structure/scene.h"

namespace {

constexpr std::array<std::string_view, 4> kSignals = {"ONINIT", "ONDONE", "ONSIGNAL", "ONCHANGED"};
constexpr int kOnChanged = 3;

constexpr int kMostClones = 10000;    // named at once; a wrong number must not eat the machine
constexpr int kLargestMin = 1000000;  // what an array without INTEGER elements has as its smallest

CMC_Array& self(const MethodCall& c) { return static_cast<CMC_Array&>(*c.object); }

CMC_Array* arrayNamed(CMC_Scene* scene, const CXString& name) {
    CMC_Object* found = scene ? scene->lookUp(name.view()) : nullptr;
    return found && found->getType() == CMC_Array::kType ? static_cast<CMC_Array*>(found) : nullptr;
}

CMC_Variable* copyOf(CMC_Variable* value) { return CMC_VariableFactory::copyVariable(value); }

int optional(const MethodCall& c, int i, int otherwise) { return c.count() > i ? c.integer(i) : otherwise; }

CMC_Variable* add(const MethodCall& c) {
    const ScriptScope scope;
    for (int i = 0; i < c.count(); ++i)
        self(c).add(c.value(i));
    return nullptr;
}

CMC_Variable* get(const MethodCall& c) {
    CMC_Variable* value = self(c).get(c.integer(0));
    return value ? copyOf(value) : toScript(CXString("NULL"));
}

template <void (CMC_Array::*apply)(CMC_Variable*)>
CMC_Variable* with(const MethodCall& c) {
    (self(c).*apply)(c.value(0));
    return nullptr;
}

template <void (CMC_Array::*apply)(int, CMC_Variable*)>
CMC_Variable* at(const MethodCall& c) {
    const int index = c.integer(0);
    (self(c).*apply)(index, c.value(1));
    return nullptr;
}

template <void (CMC_Array::*apply)(CXString, int, int)>
CMC_Variable* withArray(const MethodCall& c) {
    const CXString array = c.text(0);
    const int from = optional(c, 1, -1);
    (self(c).*apply)(array, from, optional(c, 2, -1));
    return nullptr;
}

CMC_Variable* find(const MethodCall& c) { return toScript(self(c).find(c.value(0))); }
CMC_Variable* reverseFind(const MethodCall& c) { return toScript(self(c).reversefind(c.value(0))); }
CMC_Variable* contains(const MethodCall& c) { return toScript(self(c).contains(c.value(0))); }
CMC_Variable* prev(const MethodCall& c) { return copyOf(self(c).prev(optional(c, 0, 1))); }
CMC_Variable* next(const MethodCall& c) { return copyOf(self(c).next(optional(c, 0, 1))); }

CMC_Variable* addClones(const MethodCall& c) {
    const CXString name = c.text(0);
    const CMC_Object* original = c.scene ? c.scene->lookUp(name.view()) : nullptr;
    if (original == nullptr) return nullptr;
    const int last = original->getClonesNo();
    const int from = optional(c, 1, 1);
    self(c).addClones(name, from, optional(c, 2, last));
    return nullptr;
}

CMC_Variable* clampAt(const MethodCall& c) {
    const int index = c.integer(0);
    // The second bound may be computed by the formula that gave the first.
    std::unique_ptr<CMC_Variable> low;
    CMC_Variable::keep(low, c.value(1));
    self(c).clampAt(index, low.get(), c.value(2));
    return nullptr;
}

CMC_Variable* compare(const MethodCall& c) { return toScript(self(c).compareArr(arrayNamed(c.scene, c.text(0)))); }

CMC_Variable* sendOnChange(const MethodCall& c) {
    self(c).setSendOnChange(c.count() == 0 || c.truth(0));
    return nullptr;
}

constexpr MethodRow kMethods[] = {
    {1,  "ADD",          {add, "v*"}                         },
    {2,  "GETSIZE",      bind<&CMC_Array::getSize>           },
    {3,  "INSERTAT",     {at<&CMC_Array::insertAt>, "iv"}    },
    {4,  "REMOVEAT",     bind<&CMC_Array::removeAt>          },
    {5,  "CHANGEAT",     {at<&CMC_Array::changeAt>, "iv"}    },
    {6,  "REMOVEALL",    bind<&CMC_Array::removeAll>         },
    {7,  "GET",          {get, "i"}                          },
    {8,  "REMOVE",       {with<&CMC_Array::remove>, "v"}     },
    {9,  "FIND",         {find, "v"}                         },
    {10, "CONTAINS",     {contains, "v"}                     },
    {11, "SAVEINI",      bind<&CMC_Array::saveINI>           },
    {12, "LOADINI",      bind<&CMC_Array::loadINI>           },
    {13, "PREV",         {prev, "i"}                         },
    {14, "NEXT",         {next, "i"}                         },
    {15, "ADDCLONES",    {addClones, "sii"}                  },
    {16, "RESETMARKER",  bind<&CMC_Array::resetMarker>       },
    {17, "GETMARKERPOS", bind<&CMC_Array::getMarkerPos>      },
    {18, "SETMARKERPOS", bind<&CMC_Array::setMarkerPos>      },
    {19, "SUM",          {with<&CMC_Array::sum>, "v"}        },
    {20, "SUMA",         {withArray<&CMC_Array::suma>, "sii"}},
    {21, "SUB",          {with<&CMC_Array::sub>, "v"}        },
    {22, "SUBA",         {withArray<&CMC_Array::suba>, "sii"}},
    {23, "MUL",          {with<&CMC_Array::mul>, "v"}        },
    {24, "MULA",         {withArray<&CMC_Array::mula>, "sii"}},
    {25, "DIV",          {with<&CMC_Array::div>, "v"}        },
    {32, "DIVA",         {withArray<&CMC_Array::diva>, "sii"}},
    {33, "MIN",          bind<&CMC_Array::getMin>            },
    {34, "MAX",          bind<&CMC_Array::getMax>            },
    {35, "GETSUMVALUE",  bind<&CMC_Array::getSumValue>       },
    {36, "SORT",         bind<&CMC_Array::sort>              },
    {37, "LOAD",         bind<&CMC_Array::load>              },
    {38, "SAVE",         bind<&CMC_Array::save>              },
    {39, "REVERSEFIND",  {reverseFind, "v"}                  },
    {40, "MULAT",        {at<&CMC_Array::mulat>, "iv"}       },
    {41, "DIVAT",        {at<&CMC_Array::divat>, "iv"}       },
    {42, "ADDAT",        {at<&CMC_Array::addat>, "iv"}       },
    {43, "SUBAT",        {at<&CMC_Array::subat>, "iv"}       },
    {44, "MODAT",        {at<&CMC_Array::modat>, "iv"}       },
    {45, "CLAMPAT",      {clampAt, "ivv"}                    },
    {46, "DIR",          bind<&CMC_Array::addFiles>          },
    {47, "COMPARE",      {compare, "s"}                      },
    {48, "SENDONCHANGE", {sendOnChange, "b"}                 },
    {49, "SHIFTLEFT",    bind<&CMC_Array::shiftLeft>         },
    {50, "SHIFTRIGHT",   bind<&CMC_Array::shiftRight>        },
    {51, "ROTATELEFT",   bind<&CMC_Array::rotateLeft>        },
    {52, "ROTATERIGHT",  bind<&CMC_Array::rotateRight>       },
    {53, "SWAP",         bind<&CMC_Array::swap>              },
};
static_assert(isMethodTable(kMethods));

// A value in each of the four types, so that comparing it with many elements converts it once.
class Converted {
public:
    explicit Converted(CMC_Variable* value) {
        for (CMC_Variable* form : std::initializer_list<CMC_Variable*>{&integer_, &text_, &truth_, &real_})
            form->set(value);
    }
    CMC_Variable* as(int type) {
        if (type == CMC_Integer::kType) return &integer_;
        if (type == CMC_String::kType) return &text_;
        if (type == CMC_Bool::kType) return &truth_;
        return &real_;
    }

private:
    CMC_Integer integer_{CXString()};
    CMC_String text_{CXString()};
    CMC_Bool truth_{CXString()};
    CMC_Double real_{CXString()};
};

using Values = std::vector<std::unique_ptr<CMC_Variable>>;

bool isOrdered(const Values& values) {
    return std::ranges::all_of(values, [type = values.front()->getType()](const auto& value) {
        return value->getType() == type && (type != CMC_Double::kType || !std::isnan(value->asDouble()));
    });
}

// Values of several types, each compared in the type of the one that stands already, have no order that could be
// relied on: one after the other goes in front of the first that it is below of.
void sortByInsertion(Values& values) {
    std::vector<int> types;
    for (std::size_t i = 0; i < values.size(); ++i) {
        Converted value(values[i].get());
        std::size_t place = 0;
        while (place < i && values[place]->compare(value.as(types[place])) <= 0)
            ++place;
        types.insert(types.begin() + static_cast<std::ptrdiff_t>(place), values[i]->getType());
        std::rotate(values.begin() + static_cast<std::ptrdiff_t>(place),
                    values.begin() + static_cast<std::ptrdiff_t>(i),
                    values.begin() + static_cast<std::ptrdiff_t>(i) + 1);
    }
}

}  // namespace

// While one of these lives, changes are being told, and the array stays in memory whatever the handlers do.
class CMC_Array::Telling {
public:
    explicit Telling(CMC_Array& array) : array_(array) { ++array_.tellings_; }
    ~Telling() {
        if (--array_.tellings_ == 0) array_.isRunaway_ = false;
    }
    Telling(const Telling&) = delete;
    Telling& operator=(const Telling&) = delete;

private:
    const ScriptScope scope_;
    CMC_Array& array_;
};

CMC_Array::CMC_Array(CMC_Scene* scene, CXString name) : CMC_Object(std::move(name), kType) { setScene(scene); }

CMC_Array::CMC_Array(CMC_Scene* scene, CMElement* element)
    : CMC_Object(scene, element, kType), sendOnChange_(element->getPropertyBoolValue("SENDONCHANGE")) {
    initializeBehaviours(scene, element);
}

CMC_Array::~CMC_Array() = default;

std::span<const std::string_view> CMC_Array::getBehavioursList() const { return kSignals; }

void CMC_Array::onChanged(int index) {
    if (!sendOnChange_ || isRunaway_ || isRetired() || !isSignalUsed(kOnChanged)) return;
    // Handlers that change the array without end would else go down anew from each of many elements.
    if (!ScriptScope::mayEnter()) return static_cast<void>(isRunaway_ = true);
    fire(kOnChanged, CXString::toString(index));
}

void CMC_Array::onAllChanged() {
    for (int i = 0, size = getSize(); i < size && holds(i); ++i)
        onChanged(i);
}

CMC_Variable* CMC_Array::get(int index) {
    return holds(index) ? values_[static_cast<std::size_t>(index)].get() : nullptr;
}

void CMC_Array::append(CMC_Variable* value) {
    if (auto* copy = static_cast<CMC_Variable*>(value->clone())) values_.emplace_back(copy);
}

void CMC_Array::add(CMC_Variable* value) {
    const int index = getSize();
    const Telling telling(*this);
    append(value);
    if (getSize() > index) onChanged(index);
}

void CMC_Array::join(CMC_Object* object) {
    if (CMC_Variable* value = object->asVariable()) add(value);
}

void CMC_Array::addClones(CXString name, int from, int to) {
    const Telling telling(*this);
    CMC_String value("temp");
    for (std::int64_t i = from; i <= std::min<std::int64_t>(to, std::int64_t{from} + kMostClones - 1); ++i) {
        value.assign(name + "_" + CXString::toString(static_cast<int>(i)));
        add(&value);
    }
}

void CMC_Array::insertAt(int index, CMC_Variable* value) {
    if (!holds(index) && index != getSize()) return;
    const Telling telling(*this);
    auto* copy = static_cast<CMC_Variable*>(value->clone());
    if (copy == nullptr) return;
    values_.emplace(values_.begin() + index, copy);
    onChanged(index);
}

void CMC_Array::changeAt(int index, CMC_Variable* value) {
    if (!holds(index)) return;
    const Telling telling(*this);
    if (auto* copy = static_cast<CMC_Variable*>(value->clone())) values_[static_cast<std::size_t>(index)].reset(copy);
    onChanged(index);
}

void CMC_Array::removeAt(int index) {
    if (holds(index)) values_.erase(values_.begin() + index);
}

void CMC_Array::removeAll() { values_.clear(); }

void CMC_Array::remove(CMC_Variable* value) { removeAt(find(value)); }

int CMC_Array::find(CMC_Variable* value) {
    const auto at = std::ranges::find_if(values_, [value](const auto& element) { return element->equals(value); });
    return at == values_.end() ? -1 : static_cast<int>(at - values_.begin());
}

int CMC_Array::reversefind(CMC_Variable* value) {
    for (int i = getSize() - 1; i >= 0; --i)
        if (get(i)->equals(value)) return i;
    return -1;
}

CXString CMC_Array::toString() {
    CXString text;
    for (const auto& value : values_) {
        if (value != values_.front()) text += ",";
        text += value->toString();
    }
    return text;
}

void CMC_Array::saveINI() {
    if (CConfig* config = configOf(getScene())) config->PutString(getScene()->getName(), getName(), toString());
}

void CMC_Array::loadINI() {
    CConfig* config = configOf(getScene());
    CStringTokenizer texts(config ? config->GetString(getScene()->getName(), getName()) : CXString(), ",");
    removeAll();
    while (texts.hasMoreTokens())
        values_.push_back(std::make_unique<CMC_String>("temp", texts.nextToken()));
}

CMC_Variable* CMC_Array::moveMarker(std::int64_t to) {
    if (values_.empty()) return nullptr;
    const auto size = static_cast<std::int64_t>(getSize());
    marker_ = static_cast<int>((to % size + size) % size);
    return get(marker_);
}

CMC_Variable* CMC_Array::prev(int n) { return moveMarker(std::int64_t{marker_} - n); }
CMC_Variable* CMC_Array::next(int n) { return moveMarker(std::int64_t{marker_} + n); }

void CMC_Array::setMarkerPos(int pos) { marker_ = std::clamp(pos, -1, getSize() - 1); }

void CMC_Array::calculate(int index, CMC_Variable* value, Operation op) {
    CMC_Variable* element = get(index);
    if (element == nullptr || value == nullptr) return;
    CMC_Variable* result = element->calculate(value, op);
    element->set(result);
    flush(result);
    onChanged(index);
}

void CMC_Array::calculateAt(int index, CMC_Variable* value, Operation op) {
    const Telling telling(*this);
    calculate(index, value, op);
}

void CMC_Array::calculateAll(CMC_Variable* value, Operation op) {
    const Telling telling(*this);
    // A formula's value lasts only until a handler has the formula computed anew.
    CMC_Variable* copy = value->getScene() ? nullptr : copyOf(value);
    for (int i = 0, size = getSize(); i < size && holds(i); ++i)
        calculate(i, copy ? copy : value, op);
    flush(copy);
}

void CMC_Array::sum(CMC_Variable* value) { calculateAll(value, Operation::add); }
void CMC_Array::sub(CMC_Variable* value) { calculateAll(value, Operation::subtract); }
void CMC_Array::mul(CMC_Variable* value) { calculateAll(value, Operation::multiply); }
void CMC_Array::div(CMC_Variable* value) { calculateAll(value, Operation::divide); }

void CMC_Array::calculateWith(const CXString& array, int from, int to, Operation op) {
    const Ref<CMC_Array> other(arrayNamed(getScene(), array));
    const Telling telling(*this);
    const int last = to == -1 ? getSize() - 1 : std::min(to, getSize() - 1);
    for (int i = std::max(from, 0); i <= last && other; ++i)
        calculate(i, other->get(i), op);
}

void CMC_Array::suma(CXString array, int from, int to) { calculateWith(array, from, to, Operation::add); }
void CMC_Array::suba(CXString array, int from, int to) { calculateWith(array, from, to, Operation::subtract); }
void CMC_Array::mula(CXString array, int from, int to) { calculateWith(array, from, to, Operation::multiply); }
void CMC_Array::diva(CXString array, int from, int to) { calculateWith(array, from, to, Operation::divide); }

void CMC_Array::addat(int index, CMC_Variable* value) { calculateAt(index, value, Operation::add); }
void CMC_Array::subat(int index, CMC_Variable* value) { calculateAt(index, value, Operation::subtract); }
void CMC_Array::mulat(int index, CMC_Variable* value) { calculateAt(index, value, Operation::multiply); }
void CMC_Array::divat(int index, CMC_Variable* value) { calculateAt(index, value, Operation::divide); }
void CMC_Array::modat(int index, CMC_Variable* value) { calculateAt(index, value, Operation::modulo); }

void CMC_Array::clampAt(int index, CMC_Variable* low, CMC_Variable* high) {
    const auto clamp = [](auto* element, const auto& least, const auto& most) {
        if (element->getValue() < least)
            element->setValue(least);
        else if (element->getValue() > most)
            element->setValue(most);
    };
    CMC_Variable* element = get(index);
    const int type = element ? element->getType() : 0;
    if (type == CMC_Integer::kType)
        clamp(static_cast<CMC_Integer*>(element), CMC_Integer::readOf(low), CMC_Integer::readOf(high));
    if (type == CMC_Double::kType)
        clamp(static_cast<CMC_Double*>(element), CMC_Double::readOf(low), CMC_Double::readOf(high));
}

void CMC_Array::swap(int i, int j) {
    if (!holds(i) || !holds(j)) return;
    const Telling telling(*this);
    std::swap(values_[static_cast<std::size_t>(i)], values_[static_cast<std::size_t>(j)]);
    onChanged(i);
    onChanged(j);
}

void CMC_Array::rotate(bool left, bool clears) {
    if (values_.empty()) return;
    const Telling telling(*this);
    std::rotate(values_.begin(), left ? values_.begin() + 1 : values_.end() - 1, values_.end());
    if (clears) (left ? values_.back() : values_.front())->clear();
    onAllChanged();
}

void CMC_Array::shiftLeft() { rotate(true, true); }
void CMC_Array::shiftRight() { rotate(false, true); }
void CMC_Array::rotateLeft() { rotate(true, false); }
void CMC_Array::rotateRight() { rotate(false, false); }

void CMC_Array::sort(bool ascending) {
    if (values_.empty()) return;
    if (isOrdered(values_))
        std::ranges::stable_sort(values_, [](const auto& a, const auto& b) { return a->compare(b.get()) < 0; });
    else
        sortByInsertion(values_);
    if (!ascending) std::ranges::reverse(values_);
}

bool CMC_Array::compareArr(CMC_Array* other) {
    return other &&
           std::ranges::equal(values_, other->values_, [](const auto& a, const auto& b) { return a->equals(b.get()); });
}

int CMC_Array::getMin() {
    int least = kLargestMin;
    for (const auto& value : values_)
        if (value->getType() == CMC_Integer::kType) least = std::min(least, CMC_Integer::readOf(value.get()));
    return least;
}

int CMC_Array::getMax() {
    int most = 0;
    for (const auto& value : values_)
        if (value->getType() == CMC_Integer::kType) most = std::max(most, CMC_Integer::readOf(value.get()));
    return most;
}

int CMC_Array::getSumValue() {
    int sum = 0;
    for (const auto& value : values_)
        if (value->getType() == CMC_Integer::kType)
            sum = CMC_Integer::compute(sum, CMC_Integer::readOf(value.get()), Operation::add);
    return sum;
}

void CMC_Array::addFiles(CXString path, CXString pattern) {
    CWindow* window = getScene() ? getScene()->getWindow() : nullptr;
    if (window == nullptr) return;
    const CXString before = window->GetCurrentDirectoryA();
    const CXString resolved = CPath::resolveFileName(window, path);
    if (resolved.IsString() && window->ChDir(resolved) != 0) return;
    const Telling telling(*this);
    CFolder folder(window);
    CXArray* names = folder.list(pattern);
    CMC_String value("temp");
    for (int i = 0; i < names->size(); ++i) {
        value.assign(resolved + *names->stringAt(i));
        add(&value);
    }
    CFolder::releaseFilesList(names);
    window->ChDir(before);
}

void CMC_Array::load(CXString fileName) {
    removeAll();
    CFile file;
    if (file.Open(getScene()->getWindow(), fileName, 0x11) != 0) return;
    CXArchive archive(&file, false);
    int count = 0;
    archive >> count;
    for (int i = 0; i < count && archive.ok(); ++i) {
        CMC_Variable* value = CMC_VariableFactory::restore(&archive);
        if (value == nullptr) return;
        append(value);
        flush(value);
    }
}

void CMC_Array::save(CXString fileName) {
    CFile file;
    if (file.Open(getScene()->getWindow(), fileName, 0x16) != 0) return;
    CXArchive archive(&file, true);
    archive << getSize();
    for (const auto& value : values_)
        value->store(&archive);
}

CXObject* CMC_Array::clone() {
    auto* copy = new CMC_Array(getScene(), "cloned");
    for (const auto& value : values_)
        copy->append(value.get());
    return copy;
}

void CMC_Array::serialize(CXArchive* archive) {
    CMC_Object::serialize(archive);
    if (archive->isStoring())
        *archive << sendOnChange_;
    else
        *archive >> sendOnChange_;
}

void CMC_Array_Runner::prepareMthHashSet() {
    CMC_Runner::prepareMthHashSet();
    enterMethods(kMethods);
}
