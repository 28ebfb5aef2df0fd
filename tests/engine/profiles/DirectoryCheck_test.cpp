#include "engine/profiles/DirectoryCheck.h"

#include <functional>

#include "engine/profiles/DirectoryRepair.h"
#include "engine/profiles/ProfileWorldTest.h"
#include "platform/ByteBuffer.h"

namespace {

const std::wstring kTree = L"C:\\P\\nxclip.nxp";

class DirectoryCheckTest : public ProfileWorldTest {
 protected:
    using Records = std::vector<Record>;
    static Records WholeTree() {
        return {{L"P&2&C:\\P&0&", L"P", 0, L"Profile"},
                {L"S&", L"S", 1, L"Structure"},
                {L"C&1,2&t&", L"c1", 2},
                {L"C&2,2&t&i", L"c2", 1}};
    }
    void MakeWhole() {
        for (const std::wstring& file : fake.files.AllFiles())
            fake.files.Vanish(file);
        Write(L"C:\\P", WholeTree());
        for (const wchar_t* name : {L"C1.nxc", L"C2.nxc", L"nxclip.bak", L"Notiz.txt"})
            SetFile(name, DataOf(name));
    }
    void SetFile(const std::wstring& name, const std::string& bytes) {
        fake.files.SetBytes(L"C:\\P\\" + name, bytes);
    }
    // The tree with another record in this place, or with one more.
    void SetNode(std::size_t place, const Record& record) {
        Records records = WholeTree();
        records.resize(std::max(records.size(), place + 1));
        records[place] = record;
        Write(L"C:\\P", records);
    }
    // The first of the records in a clip's file becomes this one, with so many bytes of data.
    void SetRecord(std::int32_t id, const std::string& name, std::int32_t size, std::size_t there) {
        ByteWriter writer;
        writer.Int32(id);
        writer.Int16(static_cast<std::int16_t>(name.size()));
        writer.Bytes(name.data(), name.size());
        writer.Int32(size);
        const std::string front(writer.Image().begin(), writer.Image().end());
        SetFile(L"C1.nxc", front + std::string(there, 'x') + DataOf(L"c1"));
    }
    void RepairLeavesItWhole(::Damage damage) {
        if (damage == Damage::DirectoryMissing) return;
        NodeCollection repaired;
        CTreeViewEx other;
        other.Bind(&repaired);
        fake.user.answers.assign(10, true);
        RepairDirectory(other, L"C:\\P");
        EXPECT_EQ(TextsOf(CheckDirectory(L"C:\\P")), std::vector<std::wstring>());
        EXPECT_NE(repaired.Root(), nullptr);
        Profiles().Clear();
        fake.user.messages.clear();
    }
    static std::vector<std::wstring> TextsOf(const DirectoryState& found) {
        std::vector<std::wstring> texts;
        for (const Finding& finding : found.findings)
            texts.push_back(TextOf(finding));
        return texts;
    }
    // The profile was saved, and the journal of that is still there.
    void SaveWithJournal() {
        const std::string old = *fake.files.Bytes(kTree);
        SetNode(1, {L"S&neu", L"S", 1});
        const std::string image = *fake.files.Bytes(kTree);
        fake.files.SetBytes(kTree, old);
        WriteSafeFile(kTree, {image.begin(), image.end()});
    }
};

struct Case {
    Damage damage;
    std::wstring place;
    std::function<void()> act;
};

TEST_F(DirectoryCheckTest, CheckDirectory_FindsEachSingleDamage) {
    const auto treeBytes = [&] { return *fake.files.Bytes(kTree); };
    const std::vector<Case> cases = {
        {Damage::DirectoryMissing, L"C:\\P",
         [&] {
             for (const std::wstring& file : fake.files.AllFiles())
                 fake.files.Vanish(file);
             fake.files.Vanish(L"C:\\P");
         }},
        {Damage::TreeMissing, L"nxclip.nxp", [&] { fake.files.Vanish(kTree); }},
        {Damage::TreeUnreadable, L"nxclip.nxp", [&] { fake.files.LockByOther(kTree); }},
        {Damage::TreeDamaged, L"nxclip.nxp", [&] { SetFile(L"nxclip.nxp", treeBytes().substr(0, 150)); }},
        {Damage::TreeWithoutProfile, L"nxclip.nxp",
         [&] {
             SetNode(0, {L"S&", L"P", 0});
         }},
        {Damage::TreeWithoutProfile, L"nxclip.nxp",
         [&] {
             SetNode(0, {L"P&2&C:\\P&0&", L"P", 1});
         }},
        {Damage::TreeWithoutProfile, L"nxclip.nxp", [&] { Write(L"C:\\P", {}); }},
        {Damage::JournalLeft, L"nxclip.jnl", [&] { SaveWithJournal(); }},
        {Damage::SaveBrokenOff, L"nxclip.jnl",
         [&] {
             const std::string old = treeBytes();
             SaveWithJournal();
             fake.files.SetBytes(kTree, old);
         }},
        {Damage::JournalForeign, L"nxclip.jnl", [&] { SetFile(L"nxclip.jnl", "NXJ2 and no more"); }},
        {Damage::DepthJumps, L"x",
         [&] {
             SetNode(4, {L"S&", L"x", 3});
         }},
        {Damage::DepthJumps, L"x",
         [&] {
             SetNode(4, {L"S&", L"x", -1});
         }},
        {Damage::SecondTopNode, L"x",
         [&] {
             SetNode(4, {L"S&", L"x", 0});
         }},
        {Damage::NodeOfNoKind, L"P\\S\\x",
         [&] {
             Records records = WholeTree();
             records.insert(records.begin() + 3, {L"X&", L"x", 2});
             Write(L"C:\\P", records);
         }},
        {Damage::ProfileInProfile, L"P\\x",
         [&] {
             SetNode(4, {L"P&0&C:\\P&0&", L"x", 1});
         }},
        {Damage::NodeBelowClip, L"P\\c2\\x",
         [&] {
             SetNode(4, {L"S&", L"x", 2});
         }},
        {Damage::ProfileTagDamaged, L"P",
         [&] {
             SetNode(0, {L"P&zwei&C:\\P&0&", L"P", 0});
         }},
        {Damage::ProfileTagDamaged, L"P",
         [&] {
             SetNode(0, {L"P&2147483647&C:\\P&0&", L"P", 0});
         }},
        {Damage::CounterTooLow, L"P",
         [&] {
             SetNode(0, {L"P&1&C:\\P&0&", L"P", 0});
         }},
        {Damage::ClipTagDamaged, L"P\\x",
         [&] {
             SetNode(4, {L"C&drei,2&t&", L"x", 1});
         }},
        {Damage::ClipTagDamaged, L"P\\x",
         [&] {
             SetNode(4, {L"C", L"x", 1});
         }},
        {Damage::ClipNumberTooHigh, L"P\\x",
         [&] {
             SetNode(4, {L"C&2147483647,0&t&", L"x", 1});
             SetFile(L"C2147483647.nxc", "");
         }},
        {Damage::ClipNumberTwice, L"P\\x",
         [&] {
             SetNode(4, {L"C&1,2&t&", L"x", 1});
         }},
        {Damage::ClipFileMissing, L"P\\S\\c1", [&] { fake.files.Vanish(L"C:\\P\\C1.nxc"); }},
        {Damage::ClipFileUnreadable, L"P\\S\\c1", [&] { fake.files.LockByOther(L"C:\\P\\C1.nxc"); }},
        {Damage::RecordsMissing, L"P\\c2",
         [&] {
             SetNode(3, {L"C&2,3&t&", L"c2", 1});
         }},
        {Damage::RecordDamaged, L"P\\S\\c1", [&] { SetRecord(1, "Text", 100'000, 5); }},
        {Damage::RecordDamaged, L"P\\S\\c1", [&] { SetRecord(1, "Text", -1, 5); }},
        {Damage::RecordEmpty, L"P\\S\\c1", [&] { SetFile(L"C1.nxc", std::string(500, '\0')); }},
        {Damage::RecordWithoutData, L"P\\S\\c1", [&] { SetRecord(1, "Text", 0, 0); }},
        {Damage::RecordWithoutData, L"P\\S\\c1", [&] { SetRecord(3, "Metafile", 16, 16); }},
        {Damage::RecordOfObject, L"P\\S\\c1", [&] { SetRecord(2, "Bitmap", 4, 4); }},
        {Damage::ClipWithoutNode, L"C7.nxc", [&] { SetFile(L"C7.nxc", DataOf(L"c7")); }},
        {Damage::ClipNumberTooHigh, L"C2147483647.nxc", [&] { SetFile(L"C2147483647.nxc", DataOf(L"c7")); }},
        {Damage::RestOfClip, L"C7.nxc", [&] { SetFile(L"C7.nxc", DataOf(L"c7").substr(0, 12)); }},
        {Damage::ZerosOfClip, L"C7.nxc", [&] { SetFile(L"C7.nxc", std::string(500, '\0')); }},
        {Damage::HalfCopy, L"C3.nxc.~1", [&] { SetFile(L"C3.nxc.~1", DataOf(L"c3")); }},
    };
    for (const Case& row : cases) {
        MakeWhole();
        EXPECT_TRUE(CheckDirectory(L"C:\\P").IsWhole());
        row.act();
        const auto before = fake.files.AllFiles();
        const DirectoryState found = CheckDirectory(L"C:\\P\\");
        const std::string text = "case " + std::to_string(&row - cases.data());
        ASSERT_EQ(found.findings.size(), 1u) << text;
        EXPECT_EQ(found.findings[0].damage, row.damage) << text;
        const std::wstring place = row.damage == Damage::DirectoryMissing ? L"C:\\P\\" : row.place;
        EXPECT_EQ(found.findings[0].place, place) << text;
        EXPECT_TRUE(TextOf(found.findings[0]).starts_with(place + L": "));
        EXPECT_EQ(fake.files.AllFiles(), before);
        for (const std::wstring& locked : {kTree, std::wstring(L"C:\\P\\C1.nxc")})
            fake.files.UnlockByOther(locked);
        EXPECT_TRUE(fake.user.messages.empty()) << "who looks is not told";
        RepairLeavesItWhole(row.damage);
    }
}

TEST_F(DirectoryCheckTest, CheckDirectory_LeavesToTheOwnerWhatHeIsInTheMiddleOf) {
    MakeWhole();
    const std::string old = *fake.files.Bytes(kTree);
    SaveWithJournal();
    const std::string saved = *fake.files.Bytes(kTree);
    const std::wstring half = L"C:\\P\\C3.nxc.~1", captured = L"C:\\P\\C7.nxc";
    for (const std::wstring& file : {half, captured}) {
        fake.files.SetBytes(file, DataOf(L"c7"));
        fake.files.LockByOther(file);
    }
    {
        const FileOwner lock(fake.files.Open(L"C:\\P\\nxclip.lck", FileUse::Lock));
        for (const std::string& image : {old, saved}) {
            fake.files.SetBytes(kTree, image);
            EXPECT_EQ(TextsOf(CheckDirectory(L"C:\\P")), std::vector<std::wstring>());
        }
    }
    for (const std::wstring& file : {half, captured})
        fake.files.UnlockByOther(file);
    EXPECT_EQ(CheckDirectory(L"C:\\P").findings.size(), 3u);
}

TEST_F(DirectoryCheckTest, CheckDirectory_LooksAgainAtWhatWasSavedMeanwhile) {
    MakeWhole();
    const auto secondClipGoes = [&](std::size_t done, std::size_t) {
        Records records = WholeTree();
        records.pop_back();
        if (done == 1) Write(L"C:\\P", records);
        if (done == 1) fake.files.Vanish(L"C:\\P\\C2.nxc");
        return true;
    };
    const DirectoryState found = CheckDirectory(L"C:\\P", secondClipGoes);
    EXPECT_EQ(TextsOf(found), std::vector<std::wstring>());
    EXPECT_EQ(found.clips, 1);
}

TEST_F(DirectoryCheckTest, CheckDirectory_CountsAndCanBeEnded) {
    MakeWhole();
    const DirectoryState found = CheckDirectory(L"C:\\P");
    EXPECT_EQ(std::tuple(found.folders, found.clips, found.formats), std::tuple(1, 2, 4));
    EXPECT_EQ(found.dataSize, static_cast<std::int64_t>(2 * DataOf(L"C1.nxc").size()));
    std::vector<std::size_t> heard;
    const auto ended = CheckDirectory(L"C:\\P", [&](std::size_t done, std::size_t of) {
        heard.push_back(done);
        EXPECT_EQ(of, 2u);
        return false;
    });
    EXPECT_EQ(heard, std::vector<std::size_t>{1});
    EXPECT_FALSE(ended.IsWhole());
    EXPECT_TRUE(ended.findings.empty());
}

}  // namespace
