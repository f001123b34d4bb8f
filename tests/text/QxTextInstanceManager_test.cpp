#include "text/QxTextInstanceManager.h"

#include <algorithm>
#include <atomic>
#include <list>
#include <map>
#include <thread>
#include <vector>

#include "base/Error.h"
#include "support/captured_log.h"
#include "support/random.h"
#include "text/QxTextObject.h"

namespace QxFontEffect {
namespace {

using test::CapturedLog;
using test::isDebugLine;
using test::isNativeError;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr char kTag[] = "QxTextInstanceManager";

// The registry reads no object, so addresses in here do.
char addresses[256];
QxTextObject* key(int index) {
    return reinterpret_cast<QxTextObject*>(&addresses[index]);
}

std::vector<QxTextObject*>* released = nullptr;

// What the destructor of a text object does, seen from the registry.
void deleteKey(QxTextObject* object) {
    released->push_back(object);
    const int handle = QxTextInstanceManager::FindQxTextHandle(object);
    if (handle != -1) QxTextInstanceManager::Unregister(handle);
}

class TextRegistry : public ::testing::Test {
protected:
    TextRegistry() {
        // The first text object of the process installs its own callback; have that behind us.
        { QxTextObject first; }
        released = &mReleased;
        QxTextInstanceManager::SetCallBack(deleteKey);
        mLog.take();
    }
    ~TextRegistry() override {
        QxTextInstanceManager::Unlock();
        QxTextInstanceManager::SetCallBack(__releaseQxTextCallback);
        for (char& address : addresses) {
            const int handle = QxTextInstanceManager::FindQxTextHandle(reinterpret_cast<QxTextObject*>(&address));
            if (handle != -1) QxTextInstanceManager::Unregister(handle);
        }
    }

    CapturedLog mLog;
    std::vector<QxTextObject*> mReleased;
};

TEST_F(TextRegistry, HandlesRunUpwardsAndAreNeverReused) {
    const int first = QxTextInstanceManager::Register(key(0));
    EXPECT_GE(first, 1);
    EXPECT_EQ(first, QxTextInstanceManager::Register(key(0)));
    EXPECT_EQ(first + 1, QxTextInstanceManager::Register(key(1)));
    QxTextInstanceManager::Unregister(first);
    EXPECT_EQ(-1, QxTextInstanceManager::FindQxTextHandle(key(0)));
    EXPECT_EQ(first + 2, QxTextInstanceManager::Register(key(0)));
    EXPECT_EQ(key(0), QxTextInstanceManager::FindQxTextObject(first + 2));
    EXPECT_THAT(mLog.take(), IsEmpty());
    EXPECT_EQ(nullptr, QxTextInstanceManager::FindQxTextObject(first));
    EXPECT_THAT(mLog.take(), ElementsAre(isDebugLine(
                                 kTag, "FindQxTextObject() - Can't find the handle[" + std::to_string(first) + "]")));
}

TEST_F(TextRegistry, UnknownObjectsAndHandlesAreErrorNineWithTheLineOfTheirOverload) {
    Error::SetError(0);
    EXPECT_FALSE(QxTextInstanceManager::Release(-5));
    EXPECT_THAT(mLog.take(), ElementsAre(isNativeError(kTag, 9, 109)));
    EXPECT_EQ(9, Error::GetError());

    Error::SetError(0);
    EXPECT_FALSE(QxTextInstanceManager::Release(key(2), true));
    EXPECT_THAT(mLog.take(), ElementsAre(isNativeError(kTag, 9, 126)));
    EXPECT_EQ(9, Error::GetError());

    // Registered but not bound: the handle is found, the binding is not.
    EXPECT_FALSE(QxTextInstanceManager::Release(QxTextInstanceManager::Register(key(2))));
    EXPECT_THAT(mLog.take(), ElementsAre(isNativeError(kTag, 9, 126)));
}

TEST_F(TextRegistry, BindingsAreCountedInTheLog) {
    for (int i = 0; i < 2; ++i) QxTextInstanceManager::Bind(key(3));
    EXPECT_THAT(
        mLog.take(),
        ElementsAre(
            isDebugLine(kTag, ::testing::MatchesRegex(std::string("Bind\\(") + test::kPointer + "\\) - count: 1")),
            isDebugLine(kTag, ::testing::MatchesRegex(std::string("Bind\\(") + test::kPointer + "\\) - count: 2"))));
    EXPECT_TRUE(QxTextInstanceManager::Release(key(3), true));
    EXPECT_THAT(mReleased, IsEmpty());
    EXPECT_TRUE(QxTextInstanceManager::Release(key(3), true));
    EXPECT_THAT(mReleased, ElementsAre(key(3)));
}

TEST_F(TextRegistry, WhatACallbackReleasesDuringUnlockIsDeletedToo) {
    QxTextInstanceManager::SetCallBack([](QxTextObject* object) {
        released->push_back(object);
        if (object == key(4)) QxTextInstanceManager::Release(key(5), true);
    });
    QxTextInstanceManager::Bind(key(4));
    QxTextInstanceManager::Bind(key(5));
    QxTextInstanceManager::Lock();
    QxTextInstanceManager::Release(key(4), true);
    QxTextInstanceManager::Unlock();
    EXPECT_THAT(mReleased, ElementsAre(key(4), key(5)));
}

TEST_F(TextRegistry, AnObjectBoundAtTheAddressOfTheDyingOneKeepsItsBinding) {
    QxTextInstanceManager::SetCallBack([](QxTextObject* object) {
        released->push_back(object);
        if (released->size() == 1) QxTextInstanceManager::Bind(object);
    });
    QxTextInstanceManager::Bind(key(6));
    EXPECT_TRUE(QxTextInstanceManager::Release(key(6), true));
    EXPECT_TRUE(QxTextInstanceManager::Release(key(6), true));
    EXPECT_EQ(2u, mReleased.size());
}

// The rules once more, as plainly as they go.
struct Model {
    std::map<QxTextObject*, int> counts;
    std::map<QxTextObject*, int> handles;
    std::list<QxTextObject*> parked;
    std::vector<QxTextObject*> released;
    bool locked = false;

    void drop(QxTextObject* object) {
        released.push_back(object);
        handles.erase(object);
    }
    bool release(QxTextObject* object, bool destroy) {
        if (counts.count(object) == 0) return false;
        if (counts[object]-- != 1 || !destroy) return true;
        counts.erase(object);
        locked ? parked.push_front(object) : drop(object);
        return true;
    }
    void bind(QxTextObject* object) {
        if (++counts[object] == 1) parked.remove(object);
    }
    void unlock() {
        for (QxTextObject* object : parked) drop(object);
        parked.clear();
        locked = false;
    }
};

TEST_F(TextRegistry, RandomOperationsAgreeWithTheModel) {
    constexpr uint64_t kSeed = 12;
    constexpr int kFirst = 100;  // keys that no other test binds
    constexpr int kObjects = 6;
    test::Rng rng(kSeed);
    Model model;
    for (int step = 0; step < 20000; ++step) {
        QxTextObject* const object = key(kFirst + rng.between(0, kObjects - 1));
        switch (rng.below(8)) {
            case 0: {
                const int handle = QxTextInstanceManager::Register(object);
                const auto known = model.handles.emplace(object, handle).first;
                ASSERT_EQ(known->second, handle) << step;
                break;
            }
            case 1:
                if (model.handles.count(object) != 0) QxTextInstanceManager::Unregister(model.handles[object]);
                model.handles.erase(object);
                break;
            case 2:
                ASSERT_EQ(model.release(object, false), QxTextInstanceManager::Release(object, false)) << step;
                break;
            case 3: {
                if (model.handles.count(object) == 0) break;
                const int handle = model.handles[object];
                ASSERT_EQ(model.release(object, true), QxTextInstanceManager::Release(handle)) << step;
                break;
            }
            case 4:
                ASSERT_EQ(model.release(object, true), QxTextInstanceManager::Release(object, true)) << step;
                break;
            case 5:
                rng.oneIn(2) ? (QxTextInstanceManager::Lock(), void(model.locked = true))
                             : (QxTextInstanceManager::Unlock(), model.unlock());
                break;
            default:
                QxTextInstanceManager::Bind(object);
                model.bind(object);
                break;
        }
        ASSERT_EQ(model.released, mReleased) << step;
        for (int i = kFirst; i < kFirst + kObjects; ++i) {
            const auto known = model.handles.find(key(i));
            const int handle = known == model.handles.end() ? -1 : known->second;
            ASSERT_EQ(handle, QxTextInstanceManager::FindQxTextHandle(key(i))) << step;
            ASSERT_EQ(handle == -1 ? nullptr : key(i), QxTextInstanceManager::FindQxTextObject(handle)) << step;
        }
    }
    // No binding is left to the next test.
    QxTextInstanceManager::Unlock();
    for (auto& [object, count] : model.counts) {
        for (; count < 1; ++count) QxTextInstanceManager::Bind(object);
        for (; count > 1; --count) QxTextInstanceManager::Release(object, false);
        EXPECT_TRUE(QxTextInstanceManager::Release(object, true));
    }
}

TEST_F(TextRegistry, EightThreadsShareItAndEveryObjectIsDeletedOnce) {
    constexpr int kThreads = 8;
    constexpr int kRounds = 300;
    static std::atomic<int> deletions;
    deletions = 0;
    QxTextInstanceManager::SetCallBack([](QxTextObject* object) {
        ++deletions;
        delete object;
    });
    std::vector<std::thread> threads;
    std::atomic<int> wrong{0};
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([t, &wrong] {
            for (int round = 0; round < kRounds; ++round) {
                auto* const object = new QxTextObject;
                object->Construct();
                const int handle = object->GetRuntimeHandle();
                QxTextInstanceManager::Bind(object);
                QxTextInstanceManager::Bind(object);
                if (QxTextInstanceManager::FindQxTextObject(handle) != object) ++wrong;
                if (t == 0) QxTextInstanceManager::Lock();
                if (!QxTextInstanceManager::Release(object, true)) ++wrong;
                if (!QxTextInstanceManager::Release(handle)) ++wrong;
                if (t == 0) QxTextInstanceManager::Unlock();
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    QxTextInstanceManager::Unlock();
    EXPECT_EQ(0, wrong);
    EXPECT_EQ(kThreads * kRounds, deletions);
}

}  // namespace
}  // namespace QxFontEffect
