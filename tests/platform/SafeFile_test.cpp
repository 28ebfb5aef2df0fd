#include "platform/SafeFile.h"

#include <functional>
#include <memory>
#include <optional>

#include "fake/DocumentedBytes.h"
#include "fake/FaultLoop.h"
#include "platform/CheckSum.h"
#include "platform/RuntimeError.h"

namespace {

const std::wstring kPath = L"C:\\DATA\\nxclip.nxp";
const std::wstring kJournal = L"C:\\DATA\\nxclip.jnl";

using namespace std::string_literals;
using Text = std::optional<std::string>;

// One save over what a file held before, in a machine of its own.
class Save {
 public:
    Save(const Text& before, const std::string& image) : image_(image) {
        fake.files.AddDirectory(L"C:\\DATA");
        if (before) fake.files.SetBytes(kPath, *before);
    }
    bool Run() {
        try {
            WriteSafeFile(kPath, {image_.begin(), image_.end()});
            return true;
        } catch (const RuntimeError&) {
            return false;
        }
    }
    // As the next start of the program finds it.
    static Text Loaded() {
        const Text read = Read();
        EXPECT_TRUE(FinishSave(kPath));
        EXPECT_EQ(Read(), read) << "what is read and what is put on disk are the same";
        return read;
    }

    FakePlatform fake;
    bool done = false;

 private:
    static Text Read() {
        if (!SafeFileExists(kPath)) return std::nullopt;
        try {
            const std::vector<std::uint8_t> bytes = ReadSafeFile(kPath);
            return std::string(bytes.begin(), bytes.end());
        } catch (const RuntimeError&) {
            return std::nullopt;
        }
    }

    std::string image_;
};

struct Case {
    const char* name;
    Text before;
    std::string image;
    std::string after;
};

// So much that what stands before and behind it is not written together.
const std::string kLong(3000, 'm');

const Case kCases[] = {
    {"new file", std::nullopt, "the first content", "the first content"},
    {"longer", "short", "longer than before", "longer than before"},
    {"appended", "beginning", "beginning and end", "beginning and end"},
    {"shorter keeps its tail", "a longer old content", "a shorter", "a shorterold content"},
    {"a change in the middle", "front XXXXX back", "front YYYYY back", "front YYYYY back"},
    {"far apart", "1" + kLong + "a" + kLong + "end", "2" + kLong + "b" + kLong + "end and more",
     "2" + kLong + "b" + kLong + "end and more"},
    {"nothing", "the same", "the same", "the same"},
};

int StrikeSaves(Fault fault, WriteFailure mode,
                const std::function<void(Save&, const Case&, bool struck)>& check, bool finished = false) {
    int strikes = 0;
    for (const Case& each : kCases) {
        SCOPED_TRACE(each.name);
        const auto make = [&] {
            auto save = std::make_unique<Save>(each.before, each.image);
            save->fake.failures.writeFailure = mode;
            return save;
        };
        const auto run = [&](Save& save) {
            save.done = save.Run();
            if (finished) FinishSave(kPath);
        };
        strikes +=
            StrikeEverywhere(fault, make, run, [&](Save& save, bool struck) { check(save, each, struck); });
    }
    return strikes;
}

// What stands on disk is looked at by the very next reading, before anything saves again.
TEST(SafeFileTest, Save_WithAnyOneOrTwoCallsFailing_IsDoneWholeOrNotAtAll) {
    int strikes = 0;
    for (const Fault fault : {Fault::OneCall, Fault::TwoCalls}) {
        const auto check = [&](Save& save, const Case& each, bool struck) {
            EXPECT_TRUE(save.done || fault == Fault::TwoCalls || !save.fake.files.Has(kJournal));
            const Text loaded = Save::Loaded();
            const std::string now = loaded.value_or("");
            // What could be made longer but not be written may stay longer. What could neither be made nor be
            // removed may stay whole.
            const bool untouched = each.before ? loaded && now.starts_with(*each.before)
                                               : !loaded || (fault == Fault::TwoCalls && now == each.after);
            EXPECT_TRUE(save.done ? now == each.after : untouched) << now;
            EXPECT_TRUE(save.done || struck);
            EXPECT_FALSE(save.fake.files.Has(kJournal));
        };
        for (const WriteFailure mode :
             {WriteFailure::DiskFullWithPart, WriteFailure::Nothing, WriteFailure::Short})
            strikes += StrikeSaves(fault, mode, check);
    }
    EXPECT_GT(strikes, 500);
}

// The process ends inside any call; then nothing of what was not flushed, or a part of it, may have reached
// the disk, of either file.
TEST(SafeFileTest, Save_KilledInAnyCallOrWithTheCurrentGone_LeavesOldOrNewContent) {
    int strikes = 0;
    const auto check = [](Save& save, const Case& each, bool) {
        const Text loaded = Save::Loaded();
        EXPECT_TRUE(loaded == each.after || (!save.done && loaded == each.before)) << loaded.value_or("none");
        EXPECT_FALSE(save.fake.files.Has(kJournal));
    };
    for (const Fault fault : {Fault::Kill, Fault::PowerLoss})
        for (const bool finished : {false, true})
            strikes += StrikeSaves(fault, WriteFailure::Nothing, check, finished);
    EXPECT_GT(strikes, 400);
}

class SafeFileJournalTest : public FakePlatformTest {
 protected:
    SafeFileJournalTest() { fake.files.AddDirectory(L"C:\\DATA"); }
    static void Write(const std::string& image) { WriteSafeFile(kPath, {image.begin(), image.end()}); }
    // The journal of a save that was interrupted before it touched the file, which holds "front old back".
    std::string InterruptedSave() {
        fake.files.SetBytes(kPath, "front old back");
        Write("front new back");
        const std::string journal = *fake.files.Bytes(kJournal);
        fake.files.SetBytes(kPath, "front old back");
        return journal;
    }
    static std::string Loaded() {
        FinishSave(kPath);
        const auto bytes = ReadSafeFile(kPath);
        return {bytes.begin(), bytes.end()};
    }
};

TEST_F(SafeFileJournalTest, Journal_IsLaidOutAsDocumented) {
    EXPECT_EQ(InterruptedSave(), DocumentedBytes("journal-jnl.md"));
    EXPECT_EQ(CheckSum("123456789", 9), 0xCBF43926u);
    EXPECT_EQ(JournalPathOf(kPath), kJournal);
    EXPECT_EQ(JournalPathOf(L"C:\\DATA\\NXClip.nxf"), L"C:\\DATA\\NXClip.nxf.jnl");
}

TEST_F(SafeFileJournalTest, Journal_DamagedOrOfAnotherFile_IsIgnoredAndGoes) {
    const std::string journal = InterruptedSave();
    EXPECT_EQ(Loaded(), "front new back");
    for (std::size_t i = 0; i < journal.size(); ++i) {
        std::string damaged = journal;
        damaged[i] = static_cast<char>(damaged[i] ^ 0x10);
        for (const std::string& bytes : {damaged, journal.substr(0, i), journal + "x"}) {
            fake.files.SetBytes(kPath, "front old back");
            fake.files.SetBytes(kJournal, bytes);
            EXPECT_EQ(Loaded(), "front old back") << i;
            EXPECT_FALSE(fake.files.Has(kJournal));
        }
    }
    for (const char* other : {"front old", "front old back and more", "Front old back", "front old Back",
                              "front NEW back", "front nxd back"}) {
        fake.files.SetBytes(kPath, other);
        fake.files.SetBytes(kJournal, journal);
        EXPECT_EQ(Loaded(), other);
        EXPECT_FALSE(fake.files.Has(kJournal));
    }
}

// What is laid beside its file again must not undo what came later, at the file's end either.
TEST_F(SafeFileJournalTest, Journal_OfAnEarlierSave_CountsWhereEveryByteIsOldOrNew) {
    fake.files.SetBytes(kPath, "1 short");
    Write("2 short and longer");
    const std::string journal = *fake.files.Bytes(kJournal);
    for (const std::string& half :
         {"2 short"s, "1 short and lo"s, "1 short\0\0\0\0\0\0\0nger"s, "2 short\0\0\0"s}) {
        fake.files.SetBytes(kPath, half);
        fake.files.SetBytes(kJournal, journal);
        EXPECT_EQ(Loaded(), "2 short and longer");
    }
    fake.files.SetBytes(kPath, "2 short and larger");
    fake.files.SetBytes(kJournal, journal);
    EXPECT_EQ(Loaded(), "2 short and larger");
}

// Written by version 1.0: without the old bytes.
TEST_F(SafeFileJournalTest, Journal_OfTheFirstVersion_IsStillFinished) {
    fake.files.SetBytes(kPath, "front old back");
    fake.files.SetBytes(kJournal,
                        "NXJ2\x0E\0\0\0\x0E\0\0\0\x01\0\0\0\xEF\x84\x21\xF5\x06\0\0\0\x03\0\0\0new"
                        "\xA9\xDF\x51\x2E"s);
    EXPECT_EQ(Loaded(), "front new back");
}

TEST_F(SafeFileJournalTest, Save_OfAFewBytes_WritesOnlyTheseWithOneFlush) {
    std::string image(300'000, 'a');
    Write(image);
    ASSERT_TRUE(FinishSave(kPath));
    image[0] = image[150'000] = 'b';
    image += "new at the end";
    const int flushes = fake.failures.Calls(Operation::FilesFlush);
    Write(image);
    EXPECT_EQ(fake.failures.Calls(Operation::FilesFlush), flushes + 1);
    EXPECT_LT(fake.files.Bytes(kJournal)->size(), 100u);
    EXPECT_EQ(Loaded(), image);
    EXPECT_EQ(fake.files.AllFiles(), (std::vector<std::wstring>{L"C:\\DATA\\NXCLIP.NXP"}));
}

// The mark is the check sum of all bytes, put together from those of what stayed and of what was written.
TEST_F(SafeFileJournalTest, Save_LeavesTheMarkOfWhatTheFileHoldsAndFindsAnotherContent) {
    FileMark mark;
    std::string image = kLong + kLong;
    const auto save = [&] { return WriteSafeFile(kPath, {image.begin(), image.end()}, mark); };
    for (const std::size_t change : {0u, 10u, 2000u, 5400u}) {
        image[change] = '!';
        image.resize(6000 - change / 4, '?');  // the tail of the longer file stays
        ASSERT_TRUE(save());
        EXPECT_EQ(mark, FileMark::Of(kPath)) << change;
        ASSERT_TRUE(save()) << "nothing has changed";
    }
    std::string other = *fake.files.Bytes(kPath);
    other[3000] = 'x';
    fake.files.SetBytes(kPath, other);
    const FileMark before = mark;
    EXPECT_FALSE(save());
    EXPECT_EQ(mark, before);
    EXPECT_EQ(fake.files.Bytes(kPath), other);
}

}  // namespace
