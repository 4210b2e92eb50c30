// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "script/code_line.h"

#include <algorithm>

#include "platform/platform.h"
#include "script/behaviour.h"
#include "script/expression.h"
#include "script/lifetime.h"
#include "script/runner.h"
#include "script/runner_factory.h"
#include "script/string.h"
#include "script/variable.h"
#include "script/variable_factory.h"
#include "structure/scene.h"

namespace {

bool has(const CXString& text, char c) { return text.Find(c) >= 0; }

CXString inner(const CXString& text, int margin) {
    return text.Mid(margin, std::max(margin, text.GetLength() - margin));
}

}  // namespace

bool isBlock(const CXString& text, int& margin) {
    margin = text.GetAt(0) == '"' && text.IsString() ? 2 : 1;
    return text.GetLength() >= margin && text.GetAt(margin - 1) == '{';
}

std::vector<CXString> cutParameters(const CXString& text) {
    std::vector<CXString> pieces;
    int depth = 0;
    int start = 0;
    for (int i = 0; i <= text.GetLength(); ++i) {
        const char c = i < text.GetLength() ? text.GetAt(i) : ',';
        if (c == '(') ++depth;
        if (c == ')') --depth;
        if (i < text.GetLength() && (c != ',' || depth != 0)) continue;
        if (i > start) pieces.push_back(text.Mid(start, i));
        start = i + 1;
    }
    return pieces;
}

CMC_Runner* runnerOf(CMC_Object* object) {
    if (CMC_Runner* runner = CMC_RunnerFactory::getRunner(object->getType())) return runner;
    return object->getRunner();
}

CMC_Variable* valueOf(CMC_Object* object) {
    if (object == nullptr) return nullptr;
    if (CMC_Variable* value = object->asVariable()) return value;
    CMC_String* name = CMC_VariableFactory::allocString();
    name->assign(object->getName());
    return name;
}

// The values of one run, and the ones among them that it has to clear away.
struct CMC_CodeLine::Run {
    CXVector* values;
    std::unique_ptr<CXVector> own;                    // of a run within a run of the same line
    std::vector<std::unique_ptr<CMC_Variable>> made;  // expressions and names of blocks
    std::vector<Ref<CMC_Behaviour>> blocks;
};

namespace {

// Brackets in brackets, blocks in blocks. Far above what scripts need, and within the stack of a debugging build.
constexpr int kDeepestNesting = 150;
constexpr int kMostPutIns = 30;  // of parameters into the text of parameters

class Nesting {
public:
    Nesting() { ++depth_; }
    ~Nesting() { --depth_; }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;
    static bool isTooDeep() { return depth_ > kDeepestNesting; }

private:
    static inline int depth_ = 0;
};

}  // namespace

CMC_CodeLine::CMC_CodeLine(CMC_Behaviour* owner, CXString text, Span span)
    : source_(std::move(text)), owner_(owner), span_(span) {
    const Nesting nesting;
    if (Nesting::isTooDeep()) {
        platform::current().shell.debugOutput("script: nested too deeply: " +
                                              std::string(source_.view().substr(0, 60)));
        return;
    }
    CXString& s = source_;
    if (s.lastChar() == ';') s.left(s.GetLength() - 1);
    hasDollar_ = has(s, '$');
    int open = s.Find('(');
    const int caret = s.Find('^');
    if (s.GetAt(0) == '@') {
        if (open < 0) return;
        form_ = Form::statement;
        method_ = s.Mid(1, open);
        runner_ = CMC_RunnerFactory::getRunner(0);
        if (runner_ == nullptr) runner_ = owner_->getRunner();
        methodId_ = runner_ ? runner_->resolveMethod(method_) : -1;
        compileParameters(open);
    } else if (s.GetAt(0) == '*') {
        compileIndirect(open);
    } else if (s.view().starts_with("THIS") && open >= 0) {
        form_ = Form::self;
        method_ = s.Mid(5, open);
        compileParameters(open);
    } else if (s.GetAt(0) == '[') {
        const CXString formula = inner(s, 1);
        form_ = has(formula, '$') ? Form::bracketText : Form::expression;
        if (form_ == Form::expression) expression_ = std::make_unique<CMC_Expression>(scene(), formula);
    } else if (caret < 0) {
        if (!s.IsString()) return;
        form_ = Form::atom;
        CMC_Object* found = scene() ? scene()->lookUp(s.view()) : nullptr;
        if (found && !found->isTemporary()) target_ = found;
        isLiteral_ = !hasDollar_ && CMC_Scene::isLiteralName(s.view());
    } else if (open >= 0) {
        form_ = Form::named;
        objectName_ = s.Left(caret);
        method_ = s.Mid(caret + 1, open);
        nameHasDollar_ = has(objectName_, '$');
        if (!nameHasDollar_) bind();
        compileParameters(open);
    }
    // What is left, a call without parentheses, is no script and does nothing.
}

CMC_CodeLine::~CMC_CodeLine() {
    if (!ownsBlocks_) return;
    for (const Parameter& parameter : parameters_)
        if (CMC_Behaviour* block = parameter.block.get()) CMC_Scene::discard(block);
}

// No behaviour is in another scene than it was given, so the virtual call is saved.
CMC_Scene* CMC_CodeLine::scene() const { return owner_->CMC_Object::getScene(); }

// *NAME^METHOD(...) or *[formula]^METHOD(...): the name is what the object or the formula holds at the moment.
void CMC_CodeLine::compileIndirect(int open) {
    const CXString& s = source_;
    int caret = s.Find('^');
    if (s.GetAt(1) == '[') {
        // Parentheses within the brackets don't open the parameters.
        const int behind = s.Find('^', s.Find(']') + 1);
        if (behind >= 0) {
            caret = behind;
            open = s.Find('(', caret);
        }
    }
    if (caret < 0 || open < caret) return;
    form_ = Form::indirect;
    objectName_ = s.Mid(1, caret);
    method_ = s.Mid(caret + 1, open);
    if (objectName_.GetAt(0) == '[')
        expression_ = std::make_unique<CMC_Expression>(scene(), inner(objectName_, 1));
    else if (scene())
        target_ = scene()->lookUp(objectName_.view());
    compileParameters(open);
}

void CMC_CodeLine::bind() {
    CMC_Object* found = scene() ? scene()->lookUp(objectName_.view()) : nullptr;
    if (found == nullptr || found->isTemporary()) return;
    target_ = found;
    runner_ = runnerOf(found);
    methodId_ = runner_ ? runner_->resolveMethod(method_) : -1;
}

// The parameters stand between the parenthesis at `open` and the last character, which is taken to close it.
void CMC_CodeLine::compileParameters(int open) {
    const CXString text = source_.Mid(open + 1, std::max(open + 1, source_.GetLength() - 1));
    if (!text.IsString()) return;
    hasParameters_ = true;
    for (const CXString& piece : cutParameters(text))
        compileParameter(piece);
    for (const Parameter& parameter : parameters_)
        values_.add(parameter.value.get());
    onlyLiterals_ = std::ranges::all_of(parameters_, [](const Parameter& parameter) {
        return parameter.code ? parameter.code->isLiteral_ && !parameter.code->target_
                              : parameter.value && !parameter.takesParams;
    });
}

// Literals are put in once and stay in values_. False when an object has taken the name of one: then each run looks
// them up.
bool CMC_CodeLine::literalsStand() {
    if (literalsEpoch_ == CMC_Scene::literalNameEpoch()) return true;
    literalsEpoch_ = 0;
    for (std::size_t i = 0; i < parameters_.size(); ++i) {
        CMC_CodeLine* code = parameters_[i].code.get();
        if (code == nullptr) continue;
        if (scene() && scene()->lookUp(code->source_.view())) return false;
        values_.setAt(static_cast<int>(i), code->literal());
    }
    literalsEpoch_ = CMC_Scene::literalNameEpoch();
    return true;
}

void CMC_CodeLine::compileParameter(const CXString& piece) {
    Parameter parameter;
    const bool hasDollar = has(piece, '$');
    int margin = 0;
    if (piece.GetAt(0) == '[' && !hasDollar) {
        parameter.value = std::make_unique<CMC_Expression>(scene(), inner(piece, 1));
    } else if (piece.GetAt(0) != '@' && !hasDollar && !has(piece, '^') && piece.GetAt(0) == '&') {
        const CXString name = piece.Right(1);
        CMC_Object* found = scene() ? scene()->lookUp(name.view()) : nullptr;
        if (found) {
            parameter.objectName = std::make_unique<CXString>(name);
            parameter.object = found;
            allStatic_ = false;
        } else {
            CMC_Variable* value = CMC_Variable::resolve(name);
            CMC_Variable::keep(parameter.value, value);
            CMC_Object::flush(value);
        }
    } else if ((piece.GetAt(0) == '@' || hasDollar || has(piece, '^')) && isBlock(piece, margin)) {
        CMC_Behaviour* block = CMC_Behaviour::makeBlock(scene(), inner(piece, margin), "temp_");
        if (block) {
            parameter.value = std::make_unique<CMC_String>("temp", block->getName());
            parameter.block = block;
            parameter.takesParams = has(block->getCode(), '$');
            if (parameter.takesParams) allStatic_ = false;
        }
    } else {
        parameter.code = std::make_unique<CMC_CodeLine>(owner_, piece);
        allStatic_ = false;
    }
    parameters_.push_back(std::move(parameter));
}

CMC_Variable* CMC_CodeLine::run(CMC_Object* self, const CodeParams* params) {
    switch (form_) {
        case Form::nothing:
            return nullptr;
        case Form::atom:
            return runAtom(params);
        case Form::expression:
            return expression_.get();
        case Form::bracketText:
            return CMC_Variable::resolve(source_);
        default:
            break;
    }
    if (allStatic_ || (onlyLiterals_ && literalsStand()))
        return dispatch(self, params, hasParameters_ ? &values_ : nullptr);

    Run run{.values = &values_, .own = nullptr, .made = {}, .blocks = {}};
    // The literals in values_ may be in use by a run further out.
    const bool sharesValues = !isRunning_ && !onlyLiterals_;
    if (!sharesValues) {
        run.own = std::make_unique<CXVector>(static_cast<int>(parameters_.size()) + 4);
        for (const Parameter& parameter : parameters_)
            run.own->add(parameter.value.get());
        run.values = run.own.get();
    }
    isRunning_ = isRunning_ || sharesValues;
    evaluate(run, self, params);
    CMC_Variable* result = dispatch(self, params, run.values);
    for (std::size_t i = 0; i < parameters_.size(); ++i) {
        if (parameters_[i].value) continue;
        auto* value = static_cast<CMC_Variable*>(run.values->CXVector::setAt(static_cast<int>(i), nullptr));
        const bool isOwn = std::ranges::any_of(run.made, [value](const auto& made) { return made.get() == value; });
        if (value && !isOwn) CMC_Object::release(value);
    }
    for (const Ref<CMC_Behaviour>& block : run.blocks)
        if (block) CMC_Scene::discard(block.get());
    if (sharesValues) isRunning_ = false;
    return result;
}

CMC_Variable* CMC_CodeLine::runAtom(const CodeParams* params) {
    if (CMC_Object* object = target_.get(); object && !object->isDisplaced()) return valueOf(object);
    if (hasDollar_) {
        const CXString text = substitute(source_, params);
        CMC_Object* found = scene() ? scene()->lookUp(text.view()) : nullptr;
        return found ? valueOf(found) : CMC_Variable::resolve(text);
    }
    return literal();
}

// An atom that named no object when it was compiled. Numbers, quoted texts and signs of comparisons are kept as long
// as no object has taken a name like that, which is as good as never.
CMC_Variable* CMC_CodeLine::literal() {
    const bool isKept = span_ == Span::kept && isLiteral_;
    if (isKept && literal_ && literalEpoch_ == CMC_Scene::literalNameEpoch()) return literal_.get();
    if (CMC_Object* found = scene() ? scene()->lookUp(source_.view()) : nullptr) return valueOf(found);
    CMC_Variable* value = CMC_Variable::resolve(source_);
    if (!isKept) return value;
    CMC_Variable::keep(literal_, value);
    CMC_Object::flush(value);
    literalEpoch_ = CMC_Scene::literalNameEpoch();
    return literal_.get();
}

void CMC_CodeLine::evaluate(Run& run, CMC_Object* self, const CodeParams* params) {
    for (std::size_t i = 0; i < parameters_.size(); ++i) {
        const Parameter& parameter = parameters_[i];
        CMC_Variable* value = nullptr;
        if (parameter.code) {
            if (parameter.code->hasDollar_)
                value = evaluateText(run, substitute(parameter.code->source_, params), self, params);
            else
                value = parameter.code->run(self, params);
        } else if (parameter.objectName) {
            CMC_Object* object = parameter.object.get();
            if (object == nullptr || object->isDisplaced())
                object = scene() ? scene()->lookUp(parameter.objectName->view()) : nullptr;
            value = object ? valueOf(object) : CMC_Variable::resolve(*parameter.objectName);
        } else {
            if (params)
                if (CMC_Behaviour* block = parameter.block.get()) block->setParams(*params);
            continue;
        }
        if (value == CMC_Variable::breakValue()) value = nullptr;  // a break is no value
        run.values->CXVector::setAt(static_cast<int>(i), value);
    }
}

// A parameter whose text is known only now.
CMC_Variable* CMC_CodeLine::evaluateText(Run& run, const CXString& text, CMC_Object* self, const CodeParams* params) {
    if (text.GetAt(0) == '[') {
        run.made.push_back(std::make_unique<CMC_Expression>(scene(), inner(text, 1)));
        return run.made.back().get();
    }
    if (text.GetAt(0) != '@' && !has(text, '$') && !has(text, '^')) {
        CMC_Object* found = scene() ? scene()->lookUp(text.view()) : nullptr;
        return found ? valueOf(found) : CMC_Variable::resolve(text);
    }
    int margin = 0;
    if (isBlock(text, margin)) {
        CMC_Behaviour* block = CMC_Behaviour::makeBlock(scene(), inner(text, margin), "xtemp_");
        if (block == nullptr) return nullptr;
        run.blocks.emplace_back(block);
        run.made.push_back(std::make_unique<CMC_String>("xtemp", block->getName()));
        return run.made.back().get();
    }
    // The text that is put in may ask for parameters itself, and so on.
    if (putIns_ >= kMostPutIns) ScriptScope::giveUp();
    if (!ScriptScope::mayEnter() || !ScriptBudget::spend()) return nullptr;
    const ScriptScope scope;
    ScriptBudget::spendOnCode(text.GetLength());
    CMC_CodeLine line(owner_, text, Span::passing);
    line.putIns_ = putIns_ + 1;
    CMC_Variable* value = line.run(self, params);
    // The line's own expression dies with it.
    return line.form_ == Form::expression && value ? CMC_VariableFactory::copyVariable(value->current()) : value;
}

CMC_Variable* CMC_CodeLine::callByName(CMC_Object* target, const CXString& method, CXVector* values) {
    CMC_Runner* runner = runnerOf(target);
    return runner ? runner->run(method, target, scene(), values) : nullptr;
}

// By this line's own method. Names of methods never change, so their ids are asked for once for each type met; what
// has no id may still mean something to the runner.
CMC_Variable* CMC_CodeLine::callByName(CMC_Object* target, CXVector* values) {
    if (const int type = target->getType(); type != lastType_) {
        lastType_ = type;
        lastRunner_ = CMC_RunnerFactory::getRunner(type);
        lastId_ = lastRunner_ ? lastRunner_->resolveMethod(method_) : -1;
    }
    return lastId_ != -1 ? lastRunner_->run(lastId_, target, scene(), values) : callByName(target, method_, values);
}

CMC_Variable* CMC_CodeLine::dispatch(CMC_Object* self, const CodeParams* params, CXVector* values) {
    switch (form_) {
        case Form::statement:
            return runner_ ? runner_->run(methodId_, owner_, scene(), values) : nullptr;
        case Form::self:
            return self ? callByName(self, values) : nullptr;
        case Form::indirect: {
            CMC_Object* named = expression_ ? expression_.get() : target_.get();
            if (named == nullptr || named->isDisplaced())
                named = scene() ? scene()->lookUp(objectName_.view()) : nullptr;
            CMC_Variable* holder = named ? named->asVariable() : nullptr;
            CMC_Object* target = nullptr;
            if (scene() && holder)
                target = holder->getType() == CMC_String::kType
                             ? scene()->lookUp(static_cast<CMC_String*>(holder)->getValue().view())
                             : scene()->lookUp(holder->asString().view());
            if (target) return callByName(target, values);
            platform::current().shell.debugOutput(source_.view());
            return nullptr;
        }
        default:
            break;
    }
    if (nameHasDollar_) {
        CMC_Object* target = scene() ? scene()->lookUp(substitute(objectName_, params).view()) : nullptr;
        return target ? callByName(target, has(method_, '$') ? substitute(method_, params) : method_, values) : nullptr;
    }
    if (CMC_Object* target = target_.get(); target && !target->isDisplaced()) {
        if (runner_ == nullptr) return nullptr;
        return methodId_ != -1 ? runner_->run(methodId_, target, scene(), values)
                               : runner_->run(method_, target, scene(), values);
    }
    CMC_Object* target = scene() ? scene()->lookUp(objectName_.view()) : nullptr;
    return target ? callByName(target, values) : nullptr;
}

CXString CMC_CodeLine::substitute(const CXString& text, const CodeParams* params, int limit) {
    CXString out;
    const std::string_view from = text.view();
    std::size_t plain = 0;
    for (std::size_t i = 0; i + 1 < from.size(); ++i) {
        if (from[i] != '$' || from[i + 1] < '1' || from[i + 1] > '9') continue;
        const auto index = static_cast<std::size_t>(from[i + 1] - '1');
        if (params == nullptr || index >= params->size()) continue;
        out += from.substr(plain, i - plain);
        out += (*params)[index];
        ++i;
        plain = i + 1;
        if (out.GetLength() >= limit) break;
    }
    out += from.substr(std::min(plain, from.size()));
    if (out.GetLength() >= limit) out.left(limit - 1);
    ScriptBudget::spendOnText(out.GetLength());
    return out;
}
