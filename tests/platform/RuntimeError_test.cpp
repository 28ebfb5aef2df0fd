#include "platform/RuntimeError.h"

#include <gtest/gtest.h>

#include "fake/FakePlatform.h"
#include "platform/Files.h"

namespace {

int NumberFor(std::uint32_t systemCode) {
    const RuntimeError error = FileErrorOf(systemCode, L"C:\\Größe.nxp");
    EXPECT_TRUE(error.Description().ends_with(L": C:\\Größe.nxp")) << systemCode;
    return error.Number();
}

}  // namespace

TEST(RuntimeError, FileErrorOf_TellsTheCausesApart) {
    EXPECT_EQ(NumberFor(kErrorFileNotFound), 53);
    EXPECT_EQ(NumberFor(3), 76);
    EXPECT_EQ(NumberFor(21), 76);
    for (const std::uint32_t refused : {5u, 19u, 32u, 33u})
        EXPECT_EQ(NumberFor(refused), 70);
    for (const std::uint32_t full : {39u, 112u})
        EXPECT_EQ(NumberFor(full), 61);
    EXPECT_EQ(NumberFor(1117), 57);
    EXPECT_NE(FileErrorOf(1117, L"x").Description().find(L"1117"), std::wstring::npos);
}

TEST(RuntimeError, Succeeds_TellsWhatEndedTheAction) {
    FakePlatform fake;
    const auto told = [&](const auto& action) {
        fake.user.messages.clear();
        EXPECT_FALSE(Succeeds(action));
        return fake.user.LastMessage();
    };
    EXPECT_EQ(told([] { throw RuntimeError(ErrorNumber::Overflow, L"anders"); }), L"anders");
    EXPECT_EQ(told([] { throw std::bad_alloc(); }), L"Nicht genügend Speicher");
    EXPECT_EQ(told([] { throw std::logic_error("why"); }), L"Interner Fehler: why");

    fake.user.messages.clear();
    EXPECT_TRUE(Succeeds([] {}));
    EXPECT_TRUE(fake.user.messages.empty());
}
