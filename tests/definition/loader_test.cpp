// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>
#include <memory>
#include <sstream>
#include <string>

#include "definition/element.h"
#include "definition/elements_loader.h"
#include "definition/text_coder.h"
#include "frame/application.h"
#include "frame/command_line.h"
#include "frame/window.h"
#include "platform/headless/headless.h"
#include "storage/file.h"

namespace {

// "NAME{PROPERTY=VALUE;...}[CHILD,...] NAME..."
std::string described(CMElements& elements) {
    std::string all;
    for (int i = 0; i < elements.size(); ++i) {
        CMElement& element = *elements.getAt(i);
        all += (all.empty() ? "" : " ") + std::string(element.getName().view()) + "{";
        for (CXObject* object : element.getProperties()->elements()) {
            const auto* property = static_cast<CMProperty*>(object);
            if (!all.ends_with('{')) all += ";";
            all += std::string(property->getName().view()) + "=" + std::string(property->getValue().view());
        }
        all += "}";
        for (CXObject* child : element.getChildren()->elements())
            all += "[" + std::string(static_cast<CMElement*>(child)->getName().view()) + "]";
    }
    return all;
}

std::string parsed(std::string_view text) { return described(*CMElementsLoader::parse(text)); }

// The coded form, made independently of the library's own.
std::string codedForm(const std::vector<std::string>& lines, int cycle) {
    std::string all = "{<C:" + std::to_string(cycle) + ">}\n";
    int index = 0, records = 0;
    for (const std::string& line : lines) {
        for (const char c : line) {
            all += static_cast<char>(c + (index % 2 ? -(index + 2) / 2 : (index + 2) / 2));
            index = (index + 1) % cycle;
        }
        all += "<E>";
        if (++records % cycle == 0) all += "\n";
    }
    return all.ends_with('\n') ? all : all + "\n";
}

using namespace std::string_literals;

}  // namespace

TEST(ElementsLoader, ReadsStatements) {
    const struct {
        const char *what, *text, *elements;
    } rows[] = {
        {"an empty file", "", ""},
        {"blank lines", "\n   \n\t\nOBJECT=A\n", "A{}"},
        {"no line feed at the end", "OBJECT=A\nA:X=1", "A{X=1}"},
        {"carriage returns", "OBJECT=A\r\nA:X=1\r\n", "A{X=1}"},
        {"one that exists", "OBJECT=A\nA:X=1\nOBJECT=A:OBJECT=B\nA:Y=2", "A{X=1;Y=2}"},
        {"statements on a line", "OBJECT=A:OBJECT=B=A:ADD=B:A:X=1", "A{X=1} B{}[A]"},
        {"a name is missing", "OBJECT\nOBJECT=\nIMPORT:\n", ""},
        {"a sequence", "IMPORT=S\nIMPORT=S:OBJECT=B\nS:X=1\n", "S{TYPE=SEQUENCE;X=1}"},
        {"added to a parent", "OBJECT=A\nOBJECT=B\nA:ADD=B", "A{} B{}[A]"},
        {"given a child", "OBJECT=A\nOBJECT=B\nA:APPLY=B", "A{}[B] B{}"},
        {"no such relative", "OBJECT=A\nA:ADD=B:OBJECT=B\nA:APPLY=\nA:ADD", "A{}"},
        {"twice", "OBJECT=A\nA:X=1\nA:X=2", "A{X=1;X=2}"},
        {"without a value", "OBJECT=A\nA:X=\nA:X\nA:Y=1\nA:Y=\n", "A{X=;Y=1}"},
        {"separators in a value", "OBJECT=A\nA:T=x=y\nA:U=x:=y\nA:V=x:", "A{T=x y;U=x y;V=x}"},
        {"blanks belong to tokens", "OBJECT=A\nA : X = 1\nA: X = 1 ", "A{ X = 1}"},
        {"names are exact", "OBJECT=A\na:X=1\nobject=B", "A{}"},
        {"name alone", "OBJECT=A\nA\nB\nA:", "A{}"},
        {"separators in front", "OBJECT=A\n:=A:X=1", "A{X=1}"},
        {"comments", "OBJECT=A\n  # A:X=1\nA:Y=#2", "A{Y=#2}"},
        {"the end mark", "OBJECT=A\n !\nA:X=1\nOBJECT=B\n", "A{}"},
        {"tabs vanish", "OBJ\tECT=A\n\tA:X=a\tb", "A{X=ab}"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(parsed(row.text), row.elements) << row.what;
}

TEST(ElementsLoader, SlashesJoinLines) {
    const struct {
        const char *what, *text, *elements;
    } rows[] = {
        {"at the end", "OBJECT=A\nA:T=one/\n two\nA:U=3", "A{T=one two;U=3}"},
        {"in the midst", "OBJECT=A\nA:T=a/b\nc/\nd\nA:U=3", "A{T=abcd;U=3}"},
        {"blanks before a line end", "OBJECT=A\nA:T=one /  \ntwo", "A{T=one two}"},
        {"blanks after a part", "OBJECT=A\nA:T=/one   \n   two  \n", "A{T=one   two}"},
        {"a joined line's end", "OBJECT=A\nA:T=a/\nb   \nA:U=1", "A{T=ab;U=1}"},
        {"a short line keeps its line feed", "OBJECT=A\nA:T=a/\n/\nb\nA:U=1", "A{T=a b;U=1}"},
        {"of one character", "OBJECT=A\nA:T=a/\nb\nA:U=1", "A{T=ab;U=1}"},
        {"at the end of the file", "OBJECT=A\nA:T=a/", "A{T=a}"},
        {"a comment takes the next line", "OBJECT=A\n# see/\nA:X=1\nA:Y=2", "A{Y=2}"},
        {"in a definition", "DEF:A(X=1|/\nY=a/b)\n", "A{X=1;Y=ab}"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(parsed(row.text), row.elements) << row.what;
}

TEST(ElementsLoader, DefinitionsKeepTheirSeparators) {
    const struct {
        const char *text, *elements;
    } rows[] = {
        {"DEF:A(B=1|C=x:y)", "A{B=1;C=x:y}"},
        {"DEF:A( B = 1 || C = f(x=2) )", "A{B=1;C=f(x=2)}"},
        {"DEF=A(X=)rest", "A{X=}"},
        {"DEF:A()", "A{}"},
        {"DEF: A (X=1)\nDEF:B(X=1", " A {X=1}"},
        {"OBJECT=A\nDEF:A(X=1)\nA:Y=2", "A{Y=2} A{X=1}"},
        {"DEF:A(X)\nDEF:B\nDEF:)C(", "A{}"},
        {"DEFINE:A(X=1)\nDEF", ""},
    };
    for (const auto& row : rows)
        EXPECT_EQ(parsed(row.text), row.elements) << row.text;
}

TEST(ElementsLoader, AnyBytesAreReadToTheirEnd) {
    EXPECT_EQ(parsed("OBJECT=A\nA:X=1\0"s + "2\n"), "A{X=1\0"s + "2}");
    EXPECT_EQ(parsed(std::string(200'000, '/')), "");
    std::string joined = "OBJECT=A\nA:X=/\n";
    for (int i = 0; i < 100'000; ++i)
        joined += "ab/\n";
    EXPECT_EQ(CMElementsLoader::parse(joined)->get("A")->getPropertyValue("X").GetLength(), 200'000);
    for (const char* header : {"{<C:0>}\nab<E>", "{<C:-3>}\nab<E>", "{<C:>}\nab<E>", "{<C:", "{<D:x>}"}) {
        headless::HeadlessPlatform host;
        EXPECT_EQ(parsed(header), "") << header;
        EXPECT_EQ(host.shell.debugLines().size(), 1U) << header;
    }
}

TEST(ElementsLoader, CodedFormsReadAsTheirPlainOnes) {
    const std::vector<std::string> lines = {"OBJECT=A", "",     "A:X=\xB9\xFF\x1F/", "  y", "A:Y=<E", "#", "A:Z=1",
                                            "!",        "A:N=0"};
    for (const int cycle : {1, 2, 3, 6, 8, 9, 1000, 2147483647}) {
        SCOPED_TRACE(cycle);
        const std::string coded = codedForm(lines, cycle);
        EXPECT_EQ(parsed(coded), "A{X=\xB9\xFF\x1F  y;Y=<E;Z=1}");
        EXPECT_EQ(parsed("{<D:" + coded.substr(4)), "A{X=\xB9\xFF\x1F  y;Y=<E;Z=1}");
    }
    // What is cut off reads as far as its records are whole.
    const std::string coded = codedForm({"OBJECT=A", "A:X=1", "A:Y=2", "A:Z=3"}, 2);
    const std::string forms[] = {"", "A{}", "A{X=1}", "A{X=1;Y=2}", "A{X=1;Y=2;Z=3}"};
    const auto recordsIn = [](std::string_view part) {
        std::size_t count = 0;
        for (std::size_t at = 0; (at = part.find("<E>", at)) != std::string_view::npos; at += 3)
            ++count;
        return count;
    };
    headless::HeadlessPlatform host;
    for (std::size_t length = 4; length <= coded.size(); ++length)
        EXPECT_EQ(parsed(coded.substr(0, length)), forms[recordsIn(coded.substr(0, length))]) << length;
    // A record that lost its end mark ends the text, though more lines follow.
    std::string damaged = coded;
    damaged[damaged.find("<E>")] = '[';
    damaged[damaged.find("<E>")] = '[';
    EXPECT_EQ(parsed(damaged), "");
}

TEST(TextCoder, TheOffsetsRunOnAcrossRecords) {
    headless::HeadlessPlatform host;
    host.write("a", "abc");
    ASSERT_TRUE(CTextCoder::code("a", "b", 6));
    EXPECT_EQ(host.files.readFile("b"), "{<C:6>}\nbae<E>\n");
    host.write("a", "abc\nabc\nabc");
    ASSERT_TRUE(CTextCoder::code("a", "b", 6));
    EXPECT_EQ(host.files.readFile("b"), codedForm({"abc", "abc", "abc"}, 6));
}

TEST(TextCoder, FilesAreCodedAndDecodedInWholeRecords) {
    headless::HeadlessPlatform host;
    const struct {
        const char *what, *source, *lines;
    } rows[] = {
        {"seven lines make two", "1\n2\n3\n4\n5\n6\n7\n", "1\n2\n3\n4\n5\n6\n7\n"},
        {"six make one", "1\n2\n3\n4\n5\n6", "1\n2\n3\n4\n5\n6\n"},
        {"carriage returns", "  a \r\n   \r\nb", "a\n\nb\n"},
        {"tabs go after blanks", " a\tb \n\t  c\n\t \t ", "ab\n  c\n \n"},
        {"an empty line", "a\n\nb\n", "a\n\nb\n"},
        {"an empty file", "", ""},
        {"bytes of either sign", "\xB9\x7F\xFF\x80", "\xB9\x7F\xFF\x80\n"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        std::vector<std::string> lines;
        std::istringstream stream(row.lines);
        for (std::string line; std::getline(stream, line);)
            lines.push_back(line);
        host.write("plain", row.source);
        ASSERT_TRUE(CTextCoder::code("plain", "coded", 6));
        EXPECT_EQ(host.files.readFile("coded"), lines.empty() ? "{<C:6>}\n" : codedForm(lines, 6));
        ASSERT_TRUE(CTextCoder::decode("coded", "again"));
        EXPECT_EQ(host.files.readFile("again"), std::string(row.lines) + "\n") << "the last call gives an empty line";
    }
    EXPECT_FALSE(CTextCoder::code("coded", "x", 6)) << "coded already";
    EXPECT_FALSE(CTextCoder::decode("plain", "x")) << "plain already";
    EXPECT_FALSE(CTextCoder::code("missing", "x", 6));
    EXPECT_FALSE(CTextCoder::code("plain", "x", 0));
    EXPECT_FALSE(CTextCoder::decode("coded", "nofolder\\x"));
    EXPECT_FALSE(host.files.readFile("x"));
}

TEST(TextCoder, DeliversLinesUpToTheEnd) {
    headless::HeadlessPlatform host;
    host.write("plain", "a\nb");
    CTextCoder plain("plain", false);
    EXPECT_EQ(plain.getLine(), "a\n");
    EXPECT_FALSE(plain._eof());
    EXPECT_EQ(plain.getLine(), "b\n");
    EXPECT_TRUE(plain._eof());
    EXPECT_EQ(plain.getLine(), "\n");

    host.write("coded", "{<D" + codedForm({"a", "b"}, 2).substr(3));
    CTextCoder coded("coded", false);
    EXPECT_TRUE(coded.isCoded());
    EXPECT_EQ(coded.codeLine(), "");
    EXPECT_EQ(coded.getLine(), "a\n");
    EXPECT_EQ(coded.getLine(), "b\n");
    EXPECT_FALSE(coded._eof());
    EXPECT_EQ(coded.getLine(), "\n");
    EXPECT_TRUE(coded._eof());
    EXPECT_EQ(host.files.readFile("coded.decoded"), "a\nb\n\n") << "its header asks for a copy";
    CTextCoder quiet("coded", true);
    EXPECT_FALSE(host.files.readFile("coded.decoded.decoded"));

    CTextCoder missing("missing", false);
    EXPECT_EQ(missing.LastError(), 2000);
    EXPECT_TRUE(missing._eof());
    EXPECT_EQ(CMElementsLoader::load(nullptr, "missing"), nullptr);
    EXPECT_TRUE(CTextCoder(CTextCoder::Bytes{""})._eof());
}

TEST(Element, ReadsItsPropertiesByType) {
    const auto elements = CMElementsLoader::parse(
        "DEF:A(N=-12abc|B1=true|B2=1|B3=TRUE |D=2.5x|L=a, b,,c|P=3 4|R=1,2,3,4,5|P1=7|EMPTY=|small=1)");
    const CMElement& element = *elements->get("A");
    EXPECT_EQ(element.getPropertyIntValue("N"), -12);
    EXPECT_TRUE(element.getPropertyBoolValue("B1"));
    EXPECT_FALSE(element.getPropertyBoolValue("B2"));
    EXPECT_TRUE(element.getPropertyBoolValue("B3"));
    EXPECT_EQ(element.getPropertyDoubleValue("D"), 2.5);
    EXPECT_EQ(element.getPropertyPointValue("P"), CXPoint(3, 4));
    EXPECT_EQ(element.getPropertyPointValue("P1"), CXPoint(7, 0));
    EXPECT_EQ(element.getPropertyRectValue("R"), CXRect(1, 2, 3, 4));
    EXPECT_EQ(element.getPropertyListValue("NONE"), nullptr);
    CXArray* list = element.getPropertyListValue("L");
    EXPECT_EQ(list->size(), 3);
    deleteStrings(list);
    list = element.getPropertyListValue("EMPTY");
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->size(), 0);
    deleteStrings(list);
    EXPECT_TRUE(element.hasProperty("n"));
    EXPECT_FALSE(element.isPropertyAvailable("n"));
    EXPECT_FALSE(element.hasProperty("small")) << "it is asked for as SMALL";
    EXPECT_TRUE(element.isPropertyAvailable("small"));
}

TEST(Elements, TheFirstOfANameCountsWhateverChanges) {
    CMElements owner(true);
    for (const char* name : {"A", "B", "A", "C", "B"})
        owner.add(new CMElement(CXString(name)));
    EXPECT_EQ(owner.get("A"), owner.getAt(0));
    EXPECT_EQ(owner.get("D"), nullptr);
    auto* inFront = new CMElement(CXString("B"));
    owner.insertAt(0, inFront);
    EXPECT_EQ(owner.get("B"), inFront);
    owner.remove(owner.getAt(1));
    EXPECT_EQ(owner.get("A"), owner.getAt(2)) << "the second A is the first now";
    owner.removeAt(2);
    EXPECT_EQ(owner.get("A"), nullptr);
    owner.add(new CMElement(CXString("A")));
    EXPECT_EQ(owner.get("A"), owner.getAt(4));
    delete owner.setAt(0, new CMElement(CXString("Z")));
    EXPECT_EQ(owner.get("B"), owner.getAt(1));
    EXPECT_TRUE(owner.contains("Z"));
    CMElements view(false);
    view.add(owner);
    owner.copyInto(&view);
    EXPECT_EQ(view.size(), owner.size());
    view.remove(view.getAt(0));
    EXPECT_FALSE(view.contains("Z"));
    EXPECT_TRUE(owner.contains("Z"));
    owner.removeAll();
    EXPECT_FALSE(owner.contains("Z"));

    CMElement element{CXString("E")};
    element.addProperty("X", "1");
    element.addProperty("X", "2");
    element.addProperty("X");
    element.setProperty("X", "3");
    element.setProperty("Y", "3");
    EXPECT_EQ(element.getProperties()->size(), 2);
    EXPECT_EQ(element.getPropertyValue("X"), "3");
    element.removeProperty("X");
    EXPECT_EQ(element.getPropertyValue("X"), "2");
    element.removeProperty("Y");
    element.removeAll();
    EXPECT_EQ(element.getProperties()->size(), 0);
}
