#include "engine/clipboard/ClipboardTest.h"
#include "fake/FaultLoop.h"

// A clip's whole way: from another program to disk, back on the clipboard, and out to another program. Every
// single operation of the machine fails once on each leg; the ledger of the fake machine finds what is not
// freed, closed or unlocked afterwards.

namespace {

class ClipTravelTest : public ClipboardTest {
 protected:
    ClipTravelTest()
        : richText(Registered("Rich Text Format")),
          content{FakeClipboard::Bytes(13, std::string("a\0b\0\0\0", 6)),
                  FakeClipboard::Picture(MetafileBitsWith("picture")),
                  FakeClipboard::Late(FakeClipboard::Bytes(richText, "{\\rtf1}")),
                  FakeClipboard::Enhanced(EnhancedMetafileBitsWith("enhanced")),
                  FakeClipboard::Bytes(1, std::string("text\0junk", 9))} {}

    // What another program gets of each format now.
    std::vector<std::optional<std::string>> ReadAll() {
        std::vector<std::optional<std::string>> all;
        for (const FormatNumber format :
             {FormatNumber{13}, FormatNumber{3}, richText, FormatNumber{14}, FormatNumber{1}})
            all.push_back(fake.clipboard.OtherProgramReads(format));
        return all;
    }
    const std::vector<std::optional<std::string>> whole = {
        std::string("a\0b\0\0\0", 6), MetafileBitsWith("picture"), "{\\rtf1}",
        EnhancedMetafileBitsWith("enhanced"), std::string("text\0", 5)};

    FormatNumber richText;
    Offers content;
};

}  // namespace

TEST_F(ClipTravelTest, Clip_ComesBackWhole) {
    ASSERT_EQ(Capture(content), 5);
    for (const bool asked : {true, false}) {
        ASSERT_TRUE(RestoreClip(clipBoard, mainWindow, kClip, 5));
        if (!asked) UnsubclassWindow();  // on its way out: nobody is asked any more
        EXPECT_TRUE(asked || RenderAllFormats());
        EXPECT_EQ(ReadAll(), whole);
    }
    EXPECT_TRUE(fake.user.messages.empty());
}

TEST_F(ClipTravelTest, Capture_WithAnyOperationFailingCountsWhatCanBeReadAgain) {
    for (const auto failure : {WriteFailure::DiskFullWithPart, WriteFailure::Nothing, WriteFailure::Short}) {
        fake.failures.writeFailure = failure;
        const int calls = StrikeEverywhere(
            Fault::OneCall, fake, [&] { fake.clipboard.OtherProgramCopies(content); },
            [&] { SaveClipboard(); }, [&](bool) { EXPECT_FALSE(fake.clipboard.IsOpen()); });
        EXPECT_EQ(calls, 51);
    }
}

TEST_F(ClipTravelTest, Restore_WithAnyOperationFailingKeepsTheClipReadable) {
    const std::int16_t count = Capture(content);
    const std::string bytes = ClipBytes();
    bool restored = false;
    const int calls = StrikeEverywhere(
        Fault::OneCall, fake,
        [&] {
            fake.user.statuses.clear();
            fake.user.messages.clear();
        },
        [&] { restored = RestoreClip(clipBoard, mainWindow, kClip, count); },
        [&](bool failed) {
            EXPECT_FALSE(fake.clipboard.IsOpen());
            EXPECT_EQ(ClipBytes(), bytes);
            const bool allIsThere = ReadAll() == whole;
            // A success is told only where nothing is missing, and a failure never goes without a word.
            EXPECT_EQ(restored && allIsThere, fake.user.LastStatus() == L"Clipboard erfolgreich gesetzt ...");
            EXPECT_TRUE(!fake.user.statuses.empty() || !fake.user.messages.empty());
            EXPECT_TRUE(failed || allIsThere);
        });
    EXPECT_EQ(calls, 43);
}

TEST_F(ClipTravelTest, Request_WithAnyOperationFailingIsAnsweredTheNextTime) {
    const std::int16_t count = Capture(content);
    std::vector<std::optional<std::string>> got;
    for (const auto failure : {ReadFailure::Error, ReadFailure::Short}) {
        fake.failures.readFailure = failure;
        const int calls = StrikeEverywhere(
            Fault::OneCall, fake, [&] { ASSERT_TRUE(RestoreClip(clipBoard, mainWindow, kClip, count)); },
            [&] { got = ReadAll(); },
            [&](bool) {
                for (std::size_t i = 0; i < got.size(); ++i)
                    EXPECT_TRUE(!got[i] || got[i] == whole[i]) << "whole or not at all";
                EXPECT_EQ(fake.ledger.Owned(ResourceKind::Block), 0);
                EXPECT_EQ(ReadAll(), whole);
            });
        EXPECT_EQ(calls, 58);
    }
}
