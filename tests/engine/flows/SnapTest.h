#pragma once

#include "engine/flows/CaptureWatch.h"
#include "engine/flows/ClipFlowTest.h"

// A folder that takes the clips, and who watches the clipboard for it.
class SnapTest : public ClipFlowTest {
 protected:
    SnapTest() {
        // What a new installation starts with, but for the property dialog.
        Options().UnknownFormats = 5;
    }
    void Copy(const Offers& offers) { fake.clipboard.OtherProgramCopies(offers); }
    void CopyText(const std::string& text) { Copy({FakeClipboard::Bytes(1, text + std::string(1, '\0'))}); }
    // The clip taken last, null when the folder has none.
    Node* LastClip() { return folder->LastChild(); }
    void AddSet(const wchar_t* name, std::vector<FormatSetEntry> entries) {
        FormatSet set;
        set.Name = name;
        set.Key = BuildFormatSetKey(entries);
        set.Formats = entries;
        FormatSets().Append(set);
    }
    // The data of each record that the node counts, as another program would get it.
    std::vector<std::string> StoredData(const Node& clip) {
        std::vector<std::string> all;
        const std::int16_t count = AttributesOf(&clip).formatCount;
        FileOwner file(OpenClipFile(ClipFileOf(&clip), false, true));
        CClipBoard reader;
        const auto formats = reader.LoadFormatsByHandle(file.Get(), count);
        if (formats == nullptr) return all;
        EXPECT_EQ(formats->Count(), count);
        for (CFormat& format : *formats) {
            EXPECT_TRUE(format.LoadDataFromFile(file.Get(), false));
            all.emplace_back(static_cast<const char*>(format.LockedPointer),
                             static_cast<std::size_t>(format.DataLength));
        }
        return all;
    }

    CaptureWatch flow{window, clipBoard};
};
