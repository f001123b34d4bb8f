#include "base/List.h"

#include <gtest/gtest.h>

#include <vector>

#include "base/Error.h"
#include "base/list_model.h"
#include "support/errors.h"
#include "support/random.h"

namespace QxFontEffect {
namespace {

TEST(List, EqualsAModelOverRandomOperations) {
    for (uint64_t seed = 1; seed <= 60; ++seed) {
        test::Rng rng(seed);
        test::ListAgainstModel<test::Rng> pair(rng);
        for (int step = 0; step < 600; ++step) {
            pair.operate();
            pair.check();
            ASSERT_EQ(pair.fault(), nullptr) << pair.fault() << ", seed " << seed << ", step " << step;
        }
    }
}

TEST(List, FailsBeforeConstructAndOnASecondConstruct) {
    List list, unmade, copy;
    int item = 0;
    EXPECT_TRUE(test::failsWith(8, {!list.Add(&item), !list.Insert(&item, 0), !list.Remove(&item), !list.Remove(0)}));
    EXPECT_TRUE(test::failsWith(8, {!list.RemoveAll(), list.GetCount() == -1, list.Get(0) == nullptr}));
    EXPECT_TRUE(test::failsWith(8, {list.GetIndex(&item) == -1, list.BeginTraversal() == -1, !list.EndTraversal(1)}));
    EXPECT_TRUE(test::failsWith(8, {list.GetData(1) == nullptr, !list.NextData(1), !list.Move(1, 0)}));

    void* items[] = {&item, nullptr, &item};
    EXPECT_TRUE(
        test::failsWith(7, {!list.Construct(&unmade), !list.Construct(nullptr, 1), !list.Construct(items, -1)}));
    ASSERT_TRUE(list.Construct(items, 3));
    EXPECT_TRUE(test::failsWith(4, {!list.Construct(), !list.Construct(items, 3), !list.Construct(&copy)}));
    EXPECT_TRUE(test::failsWith(7, {!list.Add(static_cast<const List*>(nullptr)), !list.Add(&unmade)}));
    EXPECT_EQ(list.GetCount(), 3);

    ASSERT_TRUE(copy.Construct(&list));
    EXPECT_EQ(copy.GetCount(), 3);
    EXPECT_EQ(copy.Get(1), nullptr);
    EXPECT_EQ(Error::GetError(), 0);
}

TEST(List, ContainsEveryItemOfAnother) {
    int a = 0, b = 0, c = 0;
    List list, part, empty;
    void* items[] = {&a, &b};
    ASSERT_TRUE(list.Construct(items, 2) && part.Construct(items + 1, 1) && empty.Construct());
    EXPECT_TRUE(list.IsContained(&part));
    EXPECT_TRUE(list.IsContained(&empty));
    ASSERT_TRUE(part.Add(&c));
    EXPECT_FALSE(list.IsContained(&part));
    EXPECT_TRUE(list.Add(static_cast<void*>(&part)));
    EXPECT_EQ(list.Get(2), &part) << "a cast stores the list itself";
}

TEST(List, RefusesHandlesThatAreNotItsOwn) {
    int item = 0;
    List list, other;
    ASSERT_TRUE(list.Construct() && other.Construct() && list.Add(&item) && other.Add(&item));
    const long foreign = other.BeginTraversal();
    const long ended = list.BeginTraversal();
    EXPECT_TRUE(list.EndTraversal(ended));
    EXPECT_TRUE(list.EndTraversal(ended)) << "ending twice is harmless";
    for (const long handle : {0L, -1L, foreign, ended, 12345L}) {
        const int code = handle == 0 || handle == -1 ? 7 : 9;
        for (const bool failed : {list.GetData(handle) == nullptr, !list.NextData(handle), !list.PrevData(handle),
                                  !list.Move(handle, 0), !list.MoveFirst(handle), !list.MoveLast(handle)})
            EXPECT_TRUE(failed) << handle;
        EXPECT_EQ(Error::GetError(), code) << handle;
    }
    EXPECT_EQ(other.GetData(foreign), &item);
}

TEST(List, IsFilledAndWalkedInLinearTime) {
    // Walking from an end at every step would take hours at this size.
    constexpr int kCount = 1000000;
    List list;
    ASSERT_TRUE(list.Construct());
    std::vector<char> items(kCount);
    for (char& item : items) ASSERT_TRUE(list.Add(&item));
    const long cursor = list.BeginTraversal();
    for (char& item : items) {
        ASSERT_EQ(list.GetData(cursor), &item);
        ASSERT_TRUE(list.NextData(cursor));
    }
    EXPECT_EQ(list.GetData(cursor), nullptr);
}

}  // namespace
}  // namespace QxFontEffect
