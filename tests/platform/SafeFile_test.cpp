#include "platform/SafeFile.h"

#include <optional>

#include "fake/DocumentedBytes.h"
#include "fake/FakePlatformTest.h"
#include "platform/CheckSum.h"
#include "platform/RuntimeError.h"

namespace {

const std::wstring kPath = L"C:\\DATA\\nxclip.nxp";
const std::wstring kJournal = L"C:\\DATA\\nxclip.jnl";

using Text = std::optional<std::string>;

// One save over what a file held before, in a machine of its own.
class Save {
 public:
    Save(const Text& before, const std::string& image) : image_(image) {
        machine.files.AddDirectory(L"C:\\DATA");
        if (before) machine.files.SetBytes(kPath, *before);
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

    FakePlatform machine;

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

// What stands on disk is looked at by the very next reading, before anything saves again.
TEST(SafeFileTest, Save_WithAnyOneOrTwoCallsFailing_IsDoneWholeOrNotAtAll) {
    int saves = 0;
    for (const Case& each : kCases) {
        for (const WriteFailure mode :
             {WriteFailure::DiskFullWithPart, WriteFailure::Nothing, WriteFailure::Short}) {
            bool firstFired = true;
            for (int n = 1; firstFired; ++n) {
                bool bothFired = true;
                for (int m = 0; bothFired; ++m) {
                    SCOPED_TRACE(std::string(each.name) + ": calls " + std::to_string(n) + " and " +
                                 std::to_string(m) + " later fail");
                    Save save(each.before, each.image);
                    save.machine.failures.writeFailure = mode;
                    save.machine.failures.FailPairOfAny(n, m);
                    const bool done = save.Run();
                    firstFired = save.machine.Fired();
                    bothFired = firstFired && (m == 0 || !save.machine.failures.Waiting());
                    save.machine.failures.FailNone();
                    const Text loaded = Save::Loaded();
                    const std::string now = loaded.value_or("");
                    // What could be made longer but not be written may stay longer. What could neither be
                    // made nor be removed may stay whole.
                    const bool untouched = each.before ? loaded && now.starts_with(*each.before)
                                                       : !loaded || (m > 0 && now == each.after);
                    ASSERT_TRUE(done ? now == each.after : untouched) << now;
                    ASSERT_TRUE(done || firstFired);
                    ++saves;
                }
            }
        }
    }
    EXPECT_GT(saves, 500);
}

// The process ends inside any call; then nothing of what was not flushed, or half of it, may have reached the
// disk, of either file.
TEST(SafeFileTest, Save_KilledInAnyCallOrWithTheCurrentGone_LeavesOldOrNewContent) {
    int kills = 0;
    for (const Case& each : kCases) {
        for (const bool finished : {false, true}) {
            for (int keptOfFile = 0; keptOfFile <= 2; ++keptOfFile) {
                for (int keptOfJournal = 0; keptOfJournal <= 2; ++keptOfJournal) {
                    bool fired = true;
                    for (int n = 1; fired; ++n) {
                        SCOPED_TRACE(std::string(each.name) + ": killed in call " + std::to_string(n));
                        Save save(each.before, each.image);
                        save.machine.failures.KillInNthOfAny(n);
                        const bool done = save.Run();
                        if (finished) FinishSave(kPath);
                        fired = save.machine.Fired();
                        save.machine.failures.FailNone();
                        save.machine.files.LoseCurrent(kPath, keptOfFile, 2);
                        save.machine.files.LoseCurrent(kJournal, keptOfJournal, 2);
                        const Text loaded = Save::Loaded();
                        if (done || loaded != each.before) {
                            ASSERT_EQ(loaded, each.after);
                        }
                        ASSERT_FALSE(save.machine.files.Has(kJournal));
                        ++kills;
                    }
                }
            }
        }
    }
    EXPECT_GT(kills, 1000);
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
    for (const char* other : {"front old", "front old back and more", "Front old back", "front old Back"}) {
        fake.files.SetBytes(kPath, other);
        fake.files.SetBytes(kJournal, journal);
        EXPECT_EQ(Loaded(), other);
        EXPECT_FALSE(fake.files.Has(kJournal));
    }
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
