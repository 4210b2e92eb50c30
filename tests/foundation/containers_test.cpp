// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "foundation/byte_reader.h"
#include "foundation/hashtable.h"
#include "foundation/integer.h"
#include "foundation/pair.h"
#include "foundation/quene.h"
#include "foundation/random.h"
#include "foundation/string_hash_code.h"
#include "platform/headless/headless.h"

namespace {

// A key whose slot the test chooses, which tells when it is destroyed.
class Key : public CXObject {
public:
    Key(int hash, int number, int* alive) : hash_(hash), number_(number), alive_(alive) { ++*alive_; }
    ~Key() override { --*alive_; }
    int getHashcode() const override { return hash_; }
    bool equals(const CXObject* other) const override { return static_cast<const Key*>(other)->number_ == number_; }
    int number() const { return number_; }

private:
    int hash_, number_;
    int* alive_;
};

// Sorted by rank; the tag tells equals apart.
class Ranked : public CXObject {
public:
    Ranked(int rank, char tag) : rank_(rank), tag_(tag) {}
    int compare(CXObject* other) override { return rank_ - static_cast<Ranked*>(other)->rank_; }
    char tag() const { return tag_; }

private:
    int rank_;
    char tag_;
};

std::string numbers(const CXVector& vector) {
    std::string all;
    for (CXObject* element : vector.elements())
        all += std::to_string(static_cast<CInteger*>(element)->getValue()) + " ";
    return all;
}

std::string tags(const CXVector& vector) {
    std::string all;
    for (CXObject* element : vector.elements())
        all += static_cast<Ranked*>(element)->tag();
    return all;
}

class Table : public testing::Test {
protected:
    Key* key(int hash, int number) {
        keys.push_back(new Key(hash, number, &alive));
        return keys.back();
    }
    CXObject* value(int i) { return &values[static_cast<std::size_t>(i)]; }

    int alive = 0;
    std::vector<Key*> keys;
    std::vector<CInteger> values = [] {
        std::vector<CInteger> all;
        for (int i = 0; i < 300; ++i)
            all.emplace_back(i);
        return all;
    }();
};

}  // namespace

TEST(Vector, DoublesWhenCapacityTimesFactorFallsBelowTheSize) {
    CXVector vector;
    CInteger element;
    for (int i = 0; i < 75; ++i)
        vector.add(&element);
    EXPECT_EQ(vector.capacity(), 101);
    vector.add(&element);
    EXPECT_EQ(vector.capacity(), 202);
    vector.removeAll();
    EXPECT_EQ(vector.capacity(), 202);

    CXVector small(4, 0.5F);
    small.add(&element);
    small.add(&element);
    EXPECT_EQ(small.capacity(), 4) << "2 isn't below 2";
    small.add(&element);
    EXPECT_EQ(small.capacity(), 8);

    CXVector source, target(4, 0.75F);
    for (int i = 0; i < 10; ++i)
        source.add(&element);
    target.add(source);
    EXPECT_EQ(target.capacity(), 16);
    EXPECT_EQ(target.size(), 10);

    CXArray full(1, 1.0F);
    for (int i = 0; i < 100; ++i)
        full.insertAt(0, &element);
    CXArray odd(-5, 0.0F);
    for (int i = 0; i < 100; ++i)
        odd.add(&element);
    EXPECT_EQ(full.size() + odd.size(), 200);
}

TEST(Vector, KeepsOrderAndIgnoresIndicesOutside) {
    std::vector<CInteger> elements;
    for (int i = 0; i < 10; ++i)
        elements.emplace_back(i);
    const auto at = [&](int i) { return &elements[static_cast<std::size_t>(i)]; };
    CXVector vector(1, 1.0F);
    for (int i = 0; i < 4; ++i)
        vector.add(at(i));
    vector.insertAt(4, at(4));
    vector.insertAt(1, at(5));
    vector.insertAt(-3, at(6));
    vector.insertAt(99, at(0));
    EXPECT_EQ(numbers(vector), "6 0 5 1 2 3 4 0 ");
    vector.remove(at(0));
    vector.remove(at(9));
    vector.removeAt(-1);
    vector.removeAt(7);
    EXPECT_EQ(numbers(vector), "6 5 1 2 3 4 0 ");
    EXPECT_EQ(vector.setAt(7, at(8)), nullptr);
    EXPECT_EQ(vector.setAt(1, at(8)), at(5));
    EXPECT_TRUE(vector.replace(at(4), at(7)));
    EXPECT_FALSE(vector.replace(at(4), at(7)));
    vector.add(vector);
    EXPECT_EQ(numbers(vector), "6 8 1 2 3 7 0 6 8 1 2 3 7 0 ");
    EXPECT_EQ(vector.find(at(7)), 5);
    EXPECT_EQ(vector[14], nullptr);
    const std::unique_ptr<CXVector> copy(static_cast<CXVector*>(vector.clone()));
    vector.removeAt(0);
    EXPECT_EQ(numbers(*copy), "6 8 1 2 3 7 0 6 8 1 2 3 7 0 ");
    EXPECT_EQ(copy->capacity(), vector.capacity());
}

TEST(SortedVector, EqualElementsKeepTheirOrderOfArrival) {
    Ranked elements[] = {{5, 'a'}, {3, 'b'}, {5, 'c'}, {4, 'd'}, {3, 'e'}, {9, 'f'}};
    CSortedVector vector(2);
    for (Ranked& element : elements)
        vector.add(&element);
    EXPECT_EQ(tags(vector), "bedacf");
    const std::unique_ptr<CSortedVector> turned(vector.reverse());
    EXPECT_EQ(tags(*turned), "fcadeb") << "turned round, and not sorted anew";
}

TEST_F(Table, TakesSlotsFromNegativeHashesToo) {
    CHashtable table(7, 1.0, true);
    const int hashes[] = {-1, 6, 1, -8, 2147483647, -2147483647 - 1, 0};
    for (int i = 0; i < 7; ++i)
        table.put(key(hashes[i], i), value(i));
    for (int i = 0; i < 7; ++i)
        EXPECT_EQ(table.get(keys[static_cast<std::size_t>(i)]), value(i)) << i;
    EXPECT_EQ(table.get(nullptr), nullptr);
    const Key sameHash(-1, 99, &alive), sameNumber(8, 0, &alive);
    EXPECT_EQ(table.get(&sameHash), nullptr);
    EXPECT_EQ(table.get(&sameNumber), nullptr) << "the slot's number alone isn't enough";
}

TEST_F(Table, ASecondEntryOfAKeyIsKeptBehindTheFirst) {
    CHashtable table(11, 1.0, true);
    table.put(key(3, 1), value(0));
    table.put(key(3, 1), value(1));
    EXPECT_EQ(table.get(keys[0]), value(0));
    EXPECT_EQ(table.getCount(), 2);
    EXPECT_TRUE(table.remove(value(0)));
    EXPECT_EQ(alive, 1);
    EXPECT_EQ(table.get(keys[1]), value(1)) << "a chain of one is still found";
    EXPECT_FALSE(table.remove(value(0)));
    EXPECT_TRUE(table.remove(keys[1], value(1)));
    EXPECT_EQ(alive, 0);
    EXPECT_EQ(table.getCount(), 0);
    table.put(key(3, 5), value(5));
    EXPECT_EQ(table.get(keys[2]), value(5)) << "the slot serves again";
}

TEST_F(Table, RemovesByValueInOrderOfSlots) {
    CHashtable table(11, 1.0, true);
    table.put(key(9, 1), value(0));
    table.put(key(2, 2), value(0));
    EXPECT_TRUE(table.remove(value(0)));
    EXPECT_EQ(table.get(keys[0]), value(0)) << "the entry in slot 2 went";
    EXPECT_TRUE(table.contains(value(0)));
    // A key that fits names the slot; one that doesn't falls back on the walk.
    const Key wrong(5, 1, &alive);
    EXPECT_TRUE(table.remove(&wrong, value(0)));
    EXPECT_FALSE(table.contains(value(0)));
}

TEST_F(Table, GrowsWhenCapacityFallsBelowCountTimesLoad) {
    CHashtable table(101, 0.75, true);
    for (int i = 0; i < 135; ++i)
        table.put(key(i, i), value(i));
    EXPECT_EQ(table.getCapacity(), 101);
    table.put(key(135, 135), value(135));  // 135 * 0.75 = 101.25
    EXPECT_EQ(table.getCapacity(), 202);
    EXPECT_EQ(table.getCount(), 136);
    for (int i = 0; i < 136; ++i)
        ASSERT_EQ(table.get(keys[static_cast<std::size_t>(i)]), value(i)) << i;
}

TEST_F(Table, GrowthEntersChainsAnewAndAllValuesFollows) {
    CHashtable table(2, 1.0, true);
    const int hashes[] = {1, 5, 0};  // slots 1 and 1 and 0 of two
    for (int i = 0; i < 3; ++i)
        table.put(key(hashes[i], i), value(i));
    EXPECT_EQ(table.getCapacity(), 2);
    EXPECT_EQ(numbers(*table.getAllValues()), "0 1 2 ");
    table.put(key(7, 3), value(3));
    EXPECT_EQ(table.getCapacity(), 4);
    EXPECT_EQ(numbers(*table.getAllValues()), "2 0 1 3 ") << "by the old slots, the new one last";
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(table.get(keys[static_cast<std::size_t>(i)]), value(i));
}

TEST_F(Table, KeysComeInOrderOfSlotsAndClonesOwnNone) {
    CHashtable table(5, 1.0, true);
    EXPECT_EQ(table.getKeys(), nullptr);
    const int hashes[] = {4, 1, 6, 0, 11};
    for (int i = 0; i < 5; ++i)
        table.put(key(hashes[i], i), value(i));
    const std::unique_ptr<CXVector> inOrder(table.getKeys());
    std::string order;
    for (CXObject* element : inOrder->elements())
        order += std::to_string(static_cast<Key*>(element)->number());
    EXPECT_EQ(order, "31240");
    {
        const std::unique_ptr<CHashtable> copy(static_cast<CHashtable*>(table.clone()));
        EXPECT_EQ(copy->get(keys[4]), value(4));
        EXPECT_TRUE(copy->remove(value(2)));
        EXPECT_EQ(numbers(*copy->getAllValues()), "0 1 3 4 ");
    }
    EXPECT_EQ(alive, 5);
    EXPECT_EQ(table.get(keys[2]), value(2)) << "a clone's chain is its own";
    table.clear();
    EXPECT_EQ(alive, 0);
    EXPECT_EQ(table.getCount() + table.getAllValues()->size(), 0);
}

TEST(Quene, GivesElementsBackInItsOrder) {
    CInteger elements[] = {CInteger(1), CInteger(2), CInteger(3)};
    CXFifoQuene first;
    CXLifoQuene last;
    CLifoQuene plain;
    for (CInteger& element : elements) {
        first.push(&element);
        last.push(&element);
        plain.push(&element);
    }
    EXPECT_EQ(first.pop(), &elements[0]);
    EXPECT_EQ(first.pop(), &elements[1]);
    EXPECT_EQ(last.pop(), &elements[2]);
    EXPECT_EQ(plain.pop(), &elements[2]);
    first.pop();
    EXPECT_EQ(first.pop(), nullptr);
    EXPECT_EQ(CFifoQuene().pop(), nullptr);
}

TEST(Pair, ATextGoesInLowerCaseAndItsPointerTwice) {
    int a = 0, b = 0;
    CXPair pair("N\xA3me", &a);
    EXPECT_EQ(pair.getText(), "n\xB3me");
    EXPECT_EQ(pair.getSecond(), &a);
    pair.setSecond(&b);
    const std::unique_ptr<CXPair> copy(static_cast<CXPair*>(pair.clone()));
    EXPECT_EQ(copy->getFirst(), &a);
    EXPECT_EQ(copy->getSecond(), &b);
}

TEST(Random, StaysInItsSpanAndRunsAgainFromASeed) {
    headless::HeadlessPlatform host;
    CXRandom::seed(7);
    const int first = CXRandom::draw();
    std::set<int> seen;
    for (int i = 0; i < 1000; ++i)
        seen.insert(CXRandom::random(5, 10));
    EXPECT_EQ(*seen.begin(), 5);
    EXPECT_EQ(*seen.rbegin(), 14);
    EXPECT_EQ(seen.size(), 10U);
    CXRandom::seed(7);
    EXPECT_EQ(CXRandom::draw(), first);
    EXPECT_EQ(CXRandom::random(0), 0);
    EXPECT_EQ(CXRandom::random(3, 0), 3);
    CXRandom::random(2147483647, 2147483647);
    CXRandom::random(-1, -2147483647 - 1);

    const int* values = CXRandom::random_vector(3, 8, 0, true);
    EXPECT_EQ(std::set<int>(values, values + 5).size(), 5U) << "span - base values";
    values = CXRandom::random_vector(0, 4, 10, true);
    EXPECT_EQ(std::set<int>(values, values + 4).size(), 4U);
    EXPECT_TRUE(std::all_of(values, values + 10, [](int v) { return v >= 0 && v < 4; }));
    values = CXRandom::random_vector(0, 1000, 1000, true);
    EXPECT_EQ(std::set<int>(values, values + 1000).size(), 1000U);
    CXRandom::random_vector(0, 10, 2147483647, false);
    CXRandom::random_vector(5, -5, -1, true);
}

TEST(Object, ProfileTellsTheTimeSinceItWasGivenAName) {
    headless::HeadlessPlatform host;
    CXObject::profile(nullptr, true);
    CXObject::profile("load", true);
    host.clock.sleep(250);
    CXObject::profile(nullptr, true);
    CXObject::profile(nullptr, true);
    ASSERT_EQ(host.shell.debugLines().size(), 1U);
    EXPECT_EQ(host.shell.debugLines()[0], "Time spend in load: 250 ms.\n");
}

TEST(Object, IdentityIsAnObjectsOwnAndByteOrderIsReversed) {
    CInteger a(4);
    const CInteger copy = a;
    EXPECT_NE(a.objectId(), copy.objectId());
    EXPECT_EQ(a.objectId(), a.objectId());
    EXPECT_EQ(CXObject::swap_word(0x1280), static_cast<std::int16_t>(0x8012));
    EXPECT_EQ(CXObject::swap_dword(0x12345680), static_cast<std::int32_t>(0x80563412));
    CInteger wraps(2147483647);
    wraps.increment();
    EXPECT_EQ(wraps.getValue(), -2147483647 - 1);
}

TEST(ByteReader, FailsForGoodAtTheFirstReadThatDoesntFit) {
    const unsigned char raw[] = {1, 2, 3, 4, 0xFF, 0xFE, 'a', 'b', 0, 'c'};
    ByteReader reader(std::as_bytes(std::span(raw)));
    EXPECT_EQ(reader.u32(), 0x04030201U);
    EXPECT_EQ(reader.i16(), -257);
    EXPECT_EQ(reader.textToZero(), "ab");
    EXPECT_EQ(reader.textToZero(), "") << "without a zero byte";
    EXPECT_FALSE(reader.ok());
    EXPECT_EQ(reader.u8(), 0) << "though one byte is left";
    for (const std::int64_t count : {std::int64_t{-1}, std::int64_t{11}, std::int64_t{1} << 40}) {
        ByteReader other(std::as_bytes(std::span(raw)));
        EXPECT_TRUE(other.bytes(count).empty());
        EXPECT_FALSE(other.ok());
    }
    ByteReader third(std::as_bytes(std::span(raw)));
    EXPECT_EQ(third.u64(), 0x6261FEFF04030201U);
    third.seek(10);
    EXPECT_TRUE(third.ok());
    third.seek(11);
    EXPECT_FALSE(third.ok());
}
