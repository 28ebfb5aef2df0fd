#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "platform/Clipboard.h"
#include "platform/Files.h"
#include "platform/Handles.h"
#include "platform/Metafiles.h"

// One clipboard format of one clip: its header (number, name, size and place in the clip data file) and,
// while it is loaded, a global memory block with its data. Layout on disk: docs/formats/clip-nxc.md.
//
// Life of the data: header only (no block) -> loaded (a block, perhaps locked) -> handed over to the
// clipboard -> released. No operation lets an exception out.
class CFormat {
 public:
    // The number as it was at capture time; a registered one is only good while that system runs.
    FormatNumber FormatId = 0;
    std::wstring FormatName;
    // The record's data bytes in the clip data file; a metafile picture's 16-byte header is among them.
    std::int32_t DataSize = 0;
    // Where the data begins in the clip data file, in bytes from its start.
    std::int32_t DataOffset = 0;
    // The data while it is loaded. Owned, unless HandedOver.
    DataHandle MemHandle = DataHandle::None;
    // The block's address while it is locked.
    void* LockedPointer = nullptr;
    // The block's length in bytes: DataSize without a metafile picture's header.
    std::int32_t DataLength = 0;
    // The block, or the object made from it, belongs to the clipboard.
    bool HandedOver = false;
    // Of "Text" and "Unicode" only: the text's beginning in letters that the program's files can keep, made
    // when it is saved in the naming mode 1. May hold line breaks and zero bytes.
    std::wstring PreviewText;
    bool Loaded = false;
    // What the clipboard gave for this format when it was asked beforehand; it owns it. Unset when it was
    // not.
    std::optional<DataHandle> Delivered;
    // The last save stored something to read or to see: no empty text, and not only a text's language.
    bool HasContent = false;
    // The number under which the clipboard took the last announcement of PrepareClipboard; 0 when it took
    // none.
    FormatNumber AnnouncedAs = 0;
    // The metafile picture's header as last read or captured.
    MetafilePicture MetaFilePict;
    // The byte count of the last read or write.
    std::uint32_t BytesTransferred = 0;
    // The system code of the file call that made the last LoadAndSaveFormat fail; 0 when it succeeded or when
    // the format was not storable. Stays when a failed save resets everything else.
    std::uint32_t WriteError = 0;
    // The record that was read last has neither number nor name. No program writes such a one, but the loss
    // of the current leaves zeros where data was still to be brought onto the disk.
    bool Blank = false;

    CFormat() = default;
    ~CFormat();
    CFormat(const CFormat&) = delete;
    CFormat& operator=(const CFormat&) = delete;

    // Unlocks the block and, unless `keep`, frees it if it is still ours and forgets it.
    void ReleaseGlobalData(bool keep);
    // The block's address, locked if it was not; null without a block.
    void* LockMemo();
    void UnlockMemo();

    // Reads one record header at the file's position and then its data, or skips that. The file stands behind
    // the record then. False for a record that the file does not hold whole; a failure to read the data is
    // told to the user.
    bool LoadFromFile(FileHandle file, bool loadData);
    // Reads this record's data into a new block; locked unless `unlockAfter`.
    bool LoadDataFromFile(FileHandle file, bool unlockAfter);

    // The number under which this format is to be put on the clipboard now: a registered one is registered
    // anew by its name.
    FormatNumber Register();
    // Announces the format on the open clipboard: its data is asked for later. Always false, deliberate;
    // AnnouncedAs tells what became of it. What stands for a GDI object is not announced.
    bool PrepareClipboard();
    // Puts the loaded data on the open clipboard. False when nothing is loaded or the clipboard refuses it;
    // the block stays ours then.
    bool SetToClipboard();
    // Answers a request for this format: reads its data from the clip data file and puts it on the clipboard.
    bool SetClipboardFromFile(const std::wstring& fileName);
    // The same for a file that is open for reading.
    bool SetClipboardFromFile(FileHandle file);
    // Takes this format's data, as delivered or from the open clipboard, and appends its record at the file's
    // position. False when it was not stored: the object is in its initial state then, but for WriteError,
    // and the file may hold the beginning of the record. Errors beyond the platform's refusals are told to
    // the user.
    bool LoadAndSaveFormat(FileHandle file);

    // Takes over a format number and finds its name. Always true.
    bool Get_ID_Name(FormatNumber id);

    // The first `maxLen` bytes of the locked block as text (all of them when `maxLen` is below 1).
    std::wstring GetText(std::int32_t maxLen) const;
    // `size` bytes at `pointer`, at most `maxLen` of them when that is above 0, as text. Zero bytes are kept.
    static std::wstring ConvertHandleToString(const void* pointer, std::int32_t size, std::int32_t maxLen);

 private:
    bool ReadHeader(FileHandle file);
    bool ReadData(FileHandle file);
    bool ReadBytes(FileHandle file, void* buffer, std::size_t size);
    bool SaveFromClipboard(FileHandle file);
    bool WriteHeader(FileHandle file, std::size_t size);
    bool WriteBlock(FileHandle file, DataHandle block);
    bool WriteMetafilePicture(FileHandle file, DataHandle block);
    bool WriteEnhancedMetafile(FileHandle file, DataHandle metafile);
    bool WriteBytes(FileHandle file, const void* bytes, std::size_t size);
    // False when the record could not be addressed by the file's 32-bit positions later.
    bool FitsIntoFile(FileHandle file, std::size_t nameSize, std::size_t size);
    bool PutMetafilePicture();
    bool PutEnhancedMetafile();
    std::int32_t MetafileFromBlock();
    void Reset();

    // What the clipboard received was made from the block: the block itself is still ours to free.
    bool clipboardHasCopy_ = false;
    // The system code of the last failed reading.
    std::uint32_t readError_ = 0;
};
