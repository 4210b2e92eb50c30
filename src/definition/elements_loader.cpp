// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "definition/elements_loader.h"

#include <algorithm>

#include "definition/element.h"
#include "definition/text_coder.h"
#include "frame/application.h"
#include "frame/command_line.h"
#include "frame/window.h"

namespace {

std::string_view trimmed(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

// The tokens between the separators; a run of them counts as one.
template <char... separators>
class Pieces {
public:
    explicit Pieces(std::string_view text) : text_(text) { skip(); }

    bool more() const { return position_ < text_.size(); }

    std::string_view next() {
        const std::size_t start = position_;
        while (more() && !isSeparator(text_[position_]))
            ++position_;
        const std::string_view piece = text_.substr(start, position_ - start);
        skip();
        return piece;
    }

private:
    static bool isSeparator(char c) { return ((c == separators) || ...); }
    void skip() {
        while (more() && isSeparator(text_[position_]))
            ++position_;
    }

    std::string_view text_;
    std::size_t position_ = 0;
};

using Tokens = Pieces<':', '=', '\n'>;

// A line with all that is joined to it, as a view into the coder's line or into `buffer`.
std::string_view logicalLine(CTextCoder& coder, std::string& buffer) {
    const std::string_view first = coder.nextLine();
    const auto has = [&](char c) { return first.find(c) != std::string_view::npos; };
    if (first.size() > 1 && !has('\t') && !has('/')) return trimmed(first);
    buffer.clear();
    for (std::string_view line = first;; line = coder.nextLine()) {
        const std::size_t start = buffer.size();
        std::copy_if(line.begin(), line.end(), std::back_inserter(buffer), [](char c) { return c != '\t'; });
        const bool continues = line.find('/') != std::string_view::npos;
        // The shortest lines keep their line feed; as a separator it parts what they join.
        if (buffer.size() - start <= 1) buffer += '\n';
        // What is there already doesn't begin with a blank.
        if (start == 0) buffer.erase(0, std::min(buffer.find_first_not_of(' '), buffer.size()));
        buffer.resize(buffer.find_last_not_of(' ') + 1);
        if (!continues || coder._eof()) break;
    }
    std::erase(buffer, '/');
    return buffer;
}

void addNew(CMElements& elements, CMElement*& added, std::string_view name) {
    added = nullptr;
    if (elements.lookUp(name)) return;
    added = new CMElement(name);
    elements.add(added);
}

// Works on the line as it stands, so that values keep their separators.
void define(CMElements& elements, std::string_view line) {
    constexpr std::size_t kNameStart = 4;
    const std::size_t open = line.find('(', std::min(kNameStart, line.size()));
    const std::size_t close = line.rfind(')');
    if (open == std::string_view::npos || close == std::string_view::npos || close < open) return;
    auto element = std::make_unique<CMElement>(line.substr(kNameStart, open - kNameStart));
    for (Pieces<'|'> pieces(line.substr(open + 1, close - open - 1)); pieces.more();) {
        const std::string_view piece = pieces.next();
        const std::size_t equals = piece.find('=');
        if (equals == std::string_view::npos) continue;
        element->addProperty(trimmed(piece.substr(0, equals)), trimmed(piece.substr(equals + 1)));
    }
    elements.add(element.release());
}

void setProperty(CMElement& element, std::string_view name, Tokens& tokens) {
    if (!tokens.more()) {
        element.addProperty(name);
        return;
    }
    CXString value = tokens.next();
    while (tokens.more()) {
        value += ' ';
        value += tokens.next();
    }
    element.getProperties()->add(new CMProperty(name, std::move(value)));
}

// Each statement takes its tokens, and the next token starts another one; a statement that fails drops the rest.
void interpret(CMElements& elements, std::string_view line) {
    for (Tokens tokens(line); tokens.more();) {
        const std::string_view word = tokens.next();
        if (word == "DEF") return define(elements, line);
        if (word == "OBJECT" || word == "IMPORT") {
            CMElement* added = nullptr;
            if (tokens.more()) addNew(elements, added, tokens.next());
            if (!added) return;
            if (word == "IMPORT") added->addProperty("TYPE", "SEQUENCE");
            continue;
        }
        CMElement* element = elements.lookUp(word);
        if (!element || !tokens.more()) return;
        const std::string_view name = tokens.next();
        if (name != "ADD" && name != "APPLY") return setProperty(*element, name, tokens);
        CMElement* other = tokens.more() ? elements.lookUp(tokens.next()) : nullptr;
        if (!other) return;
        if (name == "ADD") {
            other->addChild(element);
        } else {
            element->addChild(other);
        }
    }
}

void writeCopies(CWindow* window, const CXString& fileName) {
    const CApplication* application = window ? window->GetApplicationInterface() : nullptr;
    const CCommandLine6* commandLine = application ? application->getCommandLine() : nullptr;
    if (!commandLine) return;
    if (commandLine->isToCode()) CTextCoder::code(fileName, fileName + ".coded", CMElementsLoader::kCycle);
    if (commandLine->isToDecode()) CTextCoder::decode(fileName, fileName + ".decoded");
}

}  // namespace

CMElements* CMElementsLoader::load(CWindow* window, const CXString& fileName) {
    writeCopies(window, fileName);
    CTextCoder coder(fileName, false);
    return coder.LastError() == 0 ? load(&coder) : nullptr;
}

CMElements* CMElementsLoader::load(CTextCoder* coder) {
    auto elements = std::make_unique<CMElements>(true);
    std::string buffer;
    bool stopped = false;
    while (coder && !coder->_eof()) {
        const std::string_view line = logicalLine(*coder, buffer);
        stopped = stopped || line.starts_with('!');
        if (!stopped && !line.starts_with('#')) interpret(*elements, line);
    }
    return elements.release();
}

std::unique_ptr<CMElements> CMElementsLoader::parse(std::string_view bytes) {
    CTextCoder coder(CTextCoder::Bytes{bytes});
    return std::unique_ptr<CMElements>(load(&coder));
}

CXString CMElementsLoader::getLine(CTextCoder* coder) {
    std::string buffer;
    return coder ? CXString(logicalLine(*coder, buffer)) : CXString();
}
