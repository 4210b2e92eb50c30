// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <array>
#include <memory>
#include <span>

#include "foundation/hashtable.h"
#include "foundation/string_hash_code.h"
#include "script/object.h"

class CMC_Bool;
class CMC_Double;
class CMC_Integer;
class CMC_Runner;
class CMC_String;
class CMC_Variable;
struct MethodRow;

// The methods of a script type: one stateless object for each family of types, which carries a method out on the
// object that it is handed. A concrete runner is its table of methods (script/method_table.h).
//
// A method's result is null, a pool variable that the caller flushes, an object that stands in a scene, or
// CMC_Variable::breakValue(), which ends the running block.
class CMC_Runner : public CXObject {
public:
    CMC_Runner();
    ~CMC_Runner() override;

    // Fills the table: the generic methods here, then the type's own in each override. Called once by the factory.
    virtual void prepareMthHashSet();
    virtual void toDebug(const CXString& method, CXVector* params);  // a hook for tracing calls; does nothing

    // Parameter i; an expression is calculated first and its value given. A missing or null parameter, and one that
    // is no value, gives an empty STRING. Never null.
    virtual CMC_Variable* getParameter(CXVector* params, int i);
    // Parameter i converted. The result needs no flushing and holds until the pool's next lap: read it at once.
    virtual CMC_Bool* getParameterBool(CXVector* params, int i);
    virtual CMC_Double* getParameterDouble(CXVector* params, int i);
    virtual CMC_Integer* getParameterInteger(CXVector* params, int i);
    virtual CMC_String* getParameterString(CXVector* params, int i);

    // An id that the runner doesn't know does nothing and gives null.
    virtual CMC_Variable* run(int id, CMC_Object* object, CMC_Scene* scene, CXVector* params);
    virtual CMC_Variable* run(CXString name, CMC_Object* object, CMC_Scene* scene, CXVector* params);
    virtual int resolveMethod(const CXString& name);  // -1: no such method

    // Every method, for the reference of script methods.
    std::span<const MethodRow* const> rows() const { return rows_; }

    static int countOf(const CXVector* params) { return params ? params->size() : 0; }

    static constexpr int kLastId = 105;

protected:
    // Adds the rows to the table; a row takes the place of an earlier one of its id or name.
    void enterMethods(std::span<const MethodRow> rows);
    // Null for an id that the table hasn't.
    const MethodRow* methodOf(int id) const {
        return id < 0 || id > kLastId ? nullptr : rows_[static_cast<std::size_t>(id)];
    }

private:
    CHashtable methods_;                                // method name to CInteger, owned
    std::array<const MethodRow*, kLastId + 1> rows_{};  // by id
};
