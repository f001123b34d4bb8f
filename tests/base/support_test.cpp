#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <new>
#include <string>
#include <thread>

#include "support/failing_alloc.h"
#include "support/planes.h"

namespace QxFontEffect::test {
namespace {

// A compiler may leave out an allocation whose memory nobody looks at.
void* volatile lookedAt;
bool gave(void* memory) {
    lookedAt = memory;
    return memory != nullptr;
}

TEST(FailingAlloc, RefusesTheOneRequestOfItsThread) {
    for (int n = 0; n < 5; ++n) {
        bool given[5];
        bool elsewhere = false;
        void* first = nullptr;
        int* last = nullptr;
        {
            FailingAlloc failing(n);
            EXPECT_FALSE(failing.refused());
            void* memory = std::malloc(8);
            given[0] = gave(memory);
            std::free(memory);
            first = std::calloc(1, 8);
            given[1] = gave(first);
            void* grown = std::realloc(first, 4000);
            given[2] = gave(grown);
            first = grown != nullptr ? grown : first;
            std::unique_ptr<int> single(new (std::nothrow) int(1));
            given[3] = gave(single.get());
            try {
                last = new int[4];
            } catch (const std::bad_alloc&) {
            }
            given[4] = gave(last);
            EXPECT_TRUE(failing.refused());
            EXPECT_EQ(failing.requests(), 5);
            AllocationPause pause;
            std::thread([&] { elsewhere = gave(std::unique_ptr<int>(new int(1)).get()); }).join();
            EXPECT_EQ(failing.requests(), 5) << "not counted in a pause";
        }
        std::free(first);
        delete[] last;
        for (int i = 0; i < 5; ++i) EXPECT_EQ(given[i], i != n) << "request " << i << ", refused " << n;
        EXPECT_TRUE(elsewhere);
    }
}

TEST(GuardedPlane, TellsWritesBesideIt) {
    GuardedPlane8 plane(7, 3, 9, 2, 1);
    EXPECT_TRUE(plane.guardsIntact());
    for (const ptrdiff_t offset : {-1, 7, 8, 9 + 7, 2 * 9 + 7, 3 * 9, 3 * 9 + 60}) {
        GuardedPlane8 copy = plane;
        copy.view().data[offset] ^= 1;
        EXPECT_FALSE(copy.guardsIntact()) << offset;
        EXPECT_FALSE(samePlane(plane, copy)) << offset;
    }
    plane.view().row(2)[6] = 1;
    EXPECT_TRUE(plane.guardsIntact());
}

TEST(SamePlane, NamesTheFirstFiveWrongElements) {
    Rng rng(1);
    const GuardedPlane32 want = randomPlane32(rng, 40, 9);
    EXPECT_TRUE(samePlane(want, want, "unused"));
    GuardedPlane32 got = want;
    for (int x = 3; x < 10; ++x) got.at(x, 4) = want.at(x, 4) ^ 0x10000;
    const std::string message = samePlane(want, got, "seed", 1).message();
    EXPECT_NE(message.find("7 of 40 x 9"), std::string::npos) << message;
    EXPECT_NE(message.find("(3, 4): want 0x"), std::string::npos) << message;
    EXPECT_NE(message.find("(7, 4)"), std::string::npos) << message;
    EXPECT_EQ(message.find("(8, 4)"), std::string::npos) << message;
    EXPECT_NE(message.find("with seed 1"), std::string::npos) << message;
    EXPECT_FALSE(samePlane(want, GuardedPlane32(40, 8)));
}

}  // namespace
}  // namespace QxFontEffect::test
