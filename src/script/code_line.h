// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>
#include <vector>

#include "foundation/xvector.h"
#include "script/object.h"

class CMC_Behaviour;
class CMC_Expression;
class CMC_Runner;

// One compiled statement, or one compiled parameter or operand.
//
// Compiling looks at single characters, in this order: `@` a built-in statement, `*` a call through a name, `THIS` a
// call on the object that runs the code, `[` an expression, without `^` an atom (object or literal), else
// name^METHOD(parameters). Objects, runners and method ids are bound once, where they are known; a bound target that
// has gone, or whose name another object has taken, is looked up anew at each run.
class CMC_CodeLine {
public:
    // How long the line stands: a kept one may hand out values that it owns itself, a passing one must not.
    enum class Span { kept, passing };

    // Requires: `owner` outlives the line; its scene is where names are looked up.
    CMC_CodeLine(CMC_Behaviour* owner, CXString text, Span span = Span::kept);
    ~CMC_CodeLine();
    CMC_CodeLine(const CMC_CodeLine&) = delete;
    CMC_CodeLine& operator=(const CMC_CodeLine&) = delete;

    // The value of an atom or expression, the result of a call: null, a pool variable that the receiver flushes, an
    // object of the scene, a value of a kept line, or CMC_Variable::breakValue(). An object that is no value gives
    // its name.
    CMC_Variable* run(CMC_Object* self, const CodeParams* params);

    const CXString& getSource() const { return source_; }

    // Whether the blocks that the line's parameters made die with it; true unless said otherwise.
    void setOwnsBlocks(bool owns) { ownsBlocks_ = owns; }

    // The text with $1 to $9 replaced by the parameters there are; what is put in isn't read again. Cut short of
    // `limit` characters.
    static CXString substitute(const CXString& text, const CodeParams* params, int limit = 10240);

private:
    enum class Form : char { nothing, atom, expression, bracketText, statement, indirect, self, named };

    struct Parameter {
        std::unique_ptr<CMC_CodeLine> code;    // computes the value at run time; null: the value is fixed
        std::unique_ptr<CMC_Variable> value;   // fixed: an expression, a literal, or the name of a block
        std::unique_ptr<CXString> objectName;  // fixed to the object of this name, as long as it lives
        Ref<CMC_Object> object;
        Ref<CMC_Behaviour> block;  // what the line made of a block
        bool takesParams = false;  // the block has $1 to $9 in it
    };

    // What one run made beside pool values, and what it must clear away behind itself.
    struct Run;

    void compileIndirect(int open);
    void compileParameters(int open);
    void compileParameter(const CXString& piece);
    void bind();

    CMC_Variable* runAtom(const CodeParams* params);
    CMC_Variable* literal();
    void evaluate(Run& run, CMC_Object* self, const CodeParams* params);
    CMC_Variable* evaluateText(Run& run, const CXString& text, CMC_Object* self, const CodeParams* params);
    CMC_Variable* dispatch(CMC_Object* self, const CodeParams* params, CXVector* values);
    CMC_Variable* callByName(CMC_Object* target, const CXString& method, CXVector* values);
    CMC_Variable* callByName(CMC_Object* target, CXVector* values);
    bool literalsStand();
    CMC_Scene* scene() const;

    CXString source_;
    CMC_Behaviour* owner_;
    Form form_ = Form::nothing;
    Span span_;
    int putIns_ = 0;  // of how many texts, one made from the other, it is
    bool ownsBlocks_ = true;
    bool allStatic_ = true;      // no parameter needs work at run time
    bool onlyLiterals_ = false;  // no parameter needs work at run time as long as the literals stand
    bool hasParameters_ = false;
    bool hasDollar_ = false;
    bool nameHasDollar_ = false;
    bool isLiteral_ = false;  // an atom that nobody would name an object
    bool isRunning_ = false;  // values_ is in use; a run within gets values of its own

    CXString objectName_;
    Ref<CMC_Object> target_;  // of a call or an atom, as found when compiling
    CMC_Runner* runner_ = nullptr;
    CXString method_;
    int methodId_ = -1;  // -1: dispatch by name
    int lastType_ = -1;  // of the target of the last call by name, with its runner and the method's id
    CMC_Runner* lastRunner_ = nullptr;
    int lastId_ = -1;
    std::vector<Parameter> parameters_;
    CXVector values_{4};  // parallel to parameters_

    std::unique_ptr<CMC_Variable> literal_;  // a kept atom's literal, as long as no object bears its text as name
    unsigned literalEpoch_ = 0;
    unsigned literalsEpoch_ = 0;                  // of the literals among the parameters
    std::unique_ptr<CMC_Expression> expression_;  // of a bracket form, or of an indirect call
};

// The pieces of a parameter list: cut at commas outside parentheses; an empty piece takes no place.
std::vector<CXString> cutParameters(const CXString& text);

// The runner of that object's type: the factory's, else the object's own; null when there is none.
CMC_Runner* runnerOf(CMC_Object* object);

// An object as a value: a variable itself, any other object by its name, in a pool STRING. Null stays null.
CMC_Variable* valueOf(CMC_Object* object);

// True when a piece of code is a block in braces, or in quotes and braces; the number of characters to drop at each
// end goes to `margin`.
bool isBlock(const CXString& text, int& margin);
