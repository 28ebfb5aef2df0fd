#include "platform/UniqueHandle.h"

#include <gtest/gtest.h>

#include <type_traits>
#include <vector>

namespace {

std::vector<int> closed;

struct Traits {
    using Handle = int;
    static int None() { return -1; }
    static void Close(int handle) { closed.push_back(handle); }
};
using Owner = UniqueHandle<Traits>;

static_assert(!std::is_copy_constructible_v<Owner> && !std::is_copy_assignable_v<Owner>);
static_assert(!std::is_convertible_v<int, Owner> && !std::is_convertible_v<Owner, int>);

}  // namespace

TEST(UniqueHandle, Destroy_ClosesExactlyWhatItStillOwns) {
    closed.clear();
    {
        Owner a(1), b(2), c;
        EXPECT_FALSE(c.IsSet());
        c = std::move(a);
        EXPECT_FALSE(a.IsSet());
        EXPECT_EQ(c.Get(), 1);
        c = std::move(b);
        EXPECT_EQ(closed, std::vector<int>{1});
        c.Reset(3);
        EXPECT_EQ(closed, (std::vector<int>{1, 2}));
        Owner d(std::move(c));
        EXPECT_EQ(d.Release(), 3);
        Owner e(4);
    }
    EXPECT_EQ(closed, (std::vector<int>{1, 2, 4}));
}
