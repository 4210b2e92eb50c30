// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>
#include <random>

#include "storage/lzo_compression.h"
#include "storage/lzw_compression.h"
#include "storage/rle_compression.h"

namespace {

Bytes repeated(std::uint8_t value, std::size_t count) { return Bytes(count, value); }

Bytes joined(std::initializer_list<Bytes> parts) {
    Bytes result;
    for (const Bytes& part : parts)
        result.insert(result.end(), part.begin(), part.end());
    return result;
}

// Runs and noise in turn; the alphabet decides how well it shrinks.
Bytes sample(std::size_t size, unsigned seed, unsigned alphabet = 256) {
    std::mt19937 random(seed);
    Bytes result;
    while (result.size() < size) {
        const auto value = static_cast<std::uint8_t>(random() % alphabet);
        const std::size_t run = random() % 4 == 0 ? random() % 200 : 1;
        result.insert(result.end(), std::min(run, size - result.size()), value);
    }
    return result;
}

Bytes noise(std::size_t size, unsigned seed, unsigned alphabet) {
    std::mt19937 random(seed);
    Bytes result(size);
    for (std::uint8_t& byte : result)
        byte = static_cast<std::uint8_t>(random() % alphabet);
    return result;
}

// What the codes of a stream are, told by the rules alone: slow, and with strings spelt out.
struct Reference {
    Bytes out;
    int clears = 0;
    int widest = 0;
};

Reference decodeByRules(const Bytes& stored) {
    Reference result;
    const auto word = [&](std::size_t at) {
        return stored[at] | stored[at + 1] << 8 | stored[at + 2] << 16 |
               static_cast<std::uint32_t>(stored[at + 3]) << 24;
    };
    std::size_t bit = 12 * 8;
    int width = 9;
    const auto read = [&] {
        unsigned code = 0;
        for (int i = 0; i < width; ++i, ++bit)
            code |= (stored[bit / 8] >> (bit % 8) & 1U) << i;
        result.widest = std::max(result.widest, width);
        return code;
    };
    std::vector<Bytes> strings;
    Bytes previous;
    for (std::uint32_t left = word(8); left > 0; --left) {
        const unsigned code = read();
        if (code == 256) {
            ++result.clears;
            strings.clear();
            previous.clear();
            width = 9;
            continue;
        }
        Bytes text;
        if (code < 256) {
            text = {static_cast<std::uint8_t>(code)};
        } else if (code - 257 < strings.size()) {
            text = strings[code - 257];
        } else {
            text = previous;
            text.push_back(previous[0]);
        }
        result.out.insert(result.out.end(), text.begin(), text.end());
        if (!previous.empty() && strings.size() < 65536 - 257) {
            strings.push_back(previous);
            strings.back().push_back(text[0]);
        }
        if (!previous.empty() && width < 16 && strings.size() + 257 > (1U << width) - 1) ++width;
        previous = text;
    }
    return result;
}

}  // namespace

TEST(Rle, WritesRunsOfFourAndLiteralsOf127) {
    const struct {
        const char* what;
        Bytes input, stream;
    } rows[] = {
        {"one byte", {7}, {1, 7}},
        {"three equal ones stay as they are", {7, 7, 7}, {3, 7, 7, 7}},
        {"four become a run", {7, 7, 7, 7}, {0x84, 7}},
        {"a run of 300", repeated(9, 300), {0xFF, 9, 0xFF, 9, 0xAE, 9}},
        {"the rest of a long run", repeated(9, 130), {0xFF, 9, 3, 9, 9, 9}},
        {"literals end before a pair", {1, 2, 3, 3, 4}, {2, 1, 2, 2, 3, 3, 1, 4}},
        {"the last byte has no follower", {1, 2}, {2, 1, 2}},
        {"nothing", {}, {}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        EXPECT_EQ(CRLECompression::__compresschar(row.input), row.stream);
        EXPECT_EQ(CRLECompression::__decompresschar(row.stream, row.input.size()), row.input);
        Bytes wide, wideStream;
        for (const std::uint8_t byte : row.input) {
            wide.push_back(byte);
            wide.push_back(0xEE);
        }
        const Bytes coded = CRLECompression::__compress(wide);
        EXPECT_EQ(CRLECompression::__decompress(coded, wide.size()), wide);
        EXPECT_EQ(coded.empty() ? 0 : coded[0], row.stream.empty() ? 0 : row.stream[0]);
    }
    Bytes rising(200);
    for (std::size_t i = 0; i < rising.size(); ++i)
        rising[i] = static_cast<std::uint8_t>(i);
    const Bytes stream = CRLECompression::__compresschar(rising);
    ASSERT_EQ(stream.size(), 202U);
    EXPECT_EQ(stream[0], 127);
    EXPECT_EQ(stream[128], 73);
}

TEST(Rle, TakesNothingFromAStreamThatIsTooShort) {
    const Bytes input = sample(5000, 1), stream = CRLECompression::__compresschar(input);
    const Bytes wide = CRLECompression::__compress(input);
    for (std::size_t cut = 0; cut < stream.size(); cut += 7)
        EXPECT_FALSE(CRLECompression::__decompresschar(std::span(stream).first(cut), input.size())) << cut;
    for (std::size_t cut = 0; cut < wide.size(); cut += 7)
        EXPECT_FALSE(CRLECompression::__decompress(std::span(wide).first(cut), input.size())) << cut;
    EXPECT_FALSE(CRLECompression::__decompress(stream, std::size_t{1} << 40)) << "a size that can't be true";
    EXPECT_EQ(CRLECompression::__decompresschar(Bytes{0xFF, 3}, 5), repeated(3, 5)) << "a packet past the end is cut";
    EXPECT_EQ(CRLECompression::__decompress(Bytes{0xFF, 3, 4}, 5), (Bytes{3, 4, 3, 4, 3})) << "in the midst of a unit";
}

TEST(RowRle, ReadsRowsByTheirLengths) {
    const Bytes data = {0, 5, 0xFF, 6, 0x80, 7, 1, 8, 9};
    EXPECT_EQ(CRLECompression2(3, 1, {4}, data).Decompress(), (Bytes{5, 6, 6}));
    EXPECT_EQ(CRLECompression2(3, 1, {6}, data).Decompress(), (Bytes{5, 6, 6})) << "more than the picture holds";
    EXPECT_EQ(CRLECompression2(1, 3, {2, 2, 0}, data).Decompress(), (Bytes{5, 6, 6})) << "rows may run over";
    const Bytes run = {0x80, 7};
    EXPECT_EQ(CRLECompression2(129, 1, {2}, run).Decompress(), repeated(7, 129)) << "-128 is no special case";
    EXPECT_FALSE(CRLECompression2(3, 1, {3}, data).Decompress()) << "a row that ends before its packet";
    EXPECT_FALSE(CRLECompression2(3, 1, {-1}, data).Decompress());
    EXPECT_FALSE(CRLECompression2(3, 1, {100}, data).Decompress());
    EXPECT_FALSE(CRLECompression2(3, 2, {4}, data).Decompress()) << "a row without a length";
    EXPECT_FALSE(CRLECompression2(32767, 32767, std::vector<std::int16_t>(32767, 1), data).Decompress());
}

TEST(Lzw, WritesTheCodesOfItsRules) {
    const Bytes input = {0x61, 0x61, 0x61, 0x62};
    // Clear, 61, 101 (told by the code right before it), 62: four codes of nine bits.
    const Bytes stored = {4, 0, 0, 0, 5, 0, 0, 0, 4, 0, 0, 0, 0x00, 0xC3, 0x04, 0x14, 0x03};
    EXPECT_EQ(CLZWCompression(input).compress(), stored);
    EXPECT_EQ(CLZWCompression(stored).decompress(4), input);
}

TEST(Lzw, DecodesWhatItsCoderWritesByTheRulesAlone) {
    const struct {
        const char* what;
        Bytes input;
        int widest, leastClears;
    } rows[] = {
        {"a byte", {200}, 9, 1},
        {"one long run", repeated(3, 100000), 10, 1},
        {"runs and noise", sample(30000, 2), 13, 1},
        {"up to the frozen dictionary", noise(400000, 3, 4), 16, 1},
        {"a dictionary that fits no more", joined({noise(120000, 4, 2), noise(90000, 5, 256), noise(90000, 6, 2)}), 13,
         2},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        const Bytes stored = CLZWCompression(row.input).compress();
        const Reference told = decodeByRules(stored);
        EXPECT_TRUE(told.out == row.input);
        EXPECT_GE(told.widest, row.widest);
        EXPECT_GE(told.clears, row.leastClears);
        const std::optional<Bytes> decoded = CLZWCompression(stored).decompress(row.input.size());
        ASSERT_TRUE(decoded);
        EXPECT_TRUE(*decoded == row.input);
    }
}

TEST(Dictionaries, RefuseWhatIsDamaged) {
    const Bytes input = sample(3000, 7);
    std::size_t length = 0;
    const Bytes lzo = CLZWCompression2(input).compress(length), lzw = CLZWCompression(input).compress();
    ASSERT_EQ(lzo.size(), length + 8);
    EXPECT_EQ(CLZWCompression2(lzo).decompress(input.size()), input);
    EXPECT_FALSE(CLZWCompression2(lzo).decompress(input.size() - 1)) << "more than there is room for";
    EXPECT_FALSE(CLZWCompression(lzw).decompress(input.size() - 1));
    for (std::size_t cut = 0; cut < lzo.size(); ++cut)
        EXPECT_FALSE(CLZWCompression2(std::span(lzo).first(cut)).decompress(input.size())) << cut;
    for (std::size_t cut = 0; cut < lzw.size(); ++cut)
        EXPECT_FALSE(CLZWCompression(std::span(lzw).first(cut)).decompress(input.size())) << cut;
    // Sizes that lie, in each field of both headers.
    for (const std::uint32_t lie : {0U, 1U, 2999U, 3001U, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
        for (const std::size_t field : {0U, 4U, 8U}) {
            Bytes one = lzo, other = lzw;
            for (std::size_t i = 0; i < 4; ++i) {
                if (field < 8) one[field + i] = static_cast<std::uint8_t>(lie >> (8 * i));
                other[field + i] = static_cast<std::uint8_t>(lie >> (8 * i));
            }
            SCOPED_TRACE(testing::Message() << "field " << field << ": " << lie);
            EXPECT_FALSE(field < 8 && CLZWCompression2(one).decompress(1 << 28));
            EXPECT_FALSE(CLZWCompression(other).decompress(1 << 28));
        }
    }
    // Any byte may be wrong; what comes out then is a plane or nothing.
    std::mt19937 random(8);
    for (int i = 0; i < 2000; ++i) {
        Bytes one = lzo, other = lzw;
        one[random() % one.size()] ^= static_cast<std::uint8_t>(1 + random() % 255);
        other[random() % other.size()] ^= static_cast<std::uint8_t>(1 + random() % 255);
        (void)CLZWCompression2(one).decompress(1 << 20);
        (void)CLZWCompression(other).decompress(1 << 20);
    }
    const Bytes codeFirst = {1, 0, 0, 0, 3, 0, 0, 0, 2, 0, 0, 0, 0x00, 0x03, 0x02};
    EXPECT_FALSE(CLZWCompression(codeFirst).decompress(1)) << "behind a clear code stands a byte";
}
