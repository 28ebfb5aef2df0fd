#include "engine/clipboard/CFormat.h"

#include <algorithm>
#include <array>
#include <limits>
#include <new>
#include <string_view>
#include <vector>

#include "engine/clipboard/ClipFileLayout.h"
#include "engine/clipboard/FormatNames.h"
#include "engine/clipboard/GlobalBlock.h"
#include "engine/clipboard/modFileIO.h"
#include "engine/process/modOption.h"
#include "platform/ByteBuffer.h"
#include "platform/Platform.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"

namespace {

// The system's codes for what this unit finds out by itself.
constexpr std::uint32_t kErrorNotEnoughMemory = 8;
constexpr std::uint32_t kErrorHandleEof = 38;
constexpr std::uint32_t kErrorDiskFull = 112;
constexpr std::uint32_t kErrorFileTooLarge = 223;

// Many writes of this size are several times faster than a single one of a large block.
constexpr std::size_t kWritePiece = 1024 * 1024;

// No clip's name needs more of the text, and a text may be all the memory that there is.
constexpr std::int32_t kLongestPreviewText = 4096;

constexpr std::string_view kZeroByte("\0", 1);

// True when the options and the file's 32-bit size field let so many bytes of data be stored.
bool MayBeStored(std::size_t size) {
    const std::int32_t most = Options().MaxClipSize;
    if (size < 1 || size > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max())) return false;
    return most == 0 || static_cast<std::int64_t>(size) <= most;
}

// The text's bytes with the zero that ends it; the whole block when it has none.
std::size_t StoredTextSize(const void* text, std::size_t blockSize) {
    const auto zero = FindByte(text, blockSize, kZeroByte);
    return zero ? *zero + 1 : blockSize;
}

bool IsEmptyText(FormatNumber format, const void* text, std::size_t size) {
    const bool narrow = format == kTextFormat || format == kOemTextFormat;
    const std::size_t character = narrow ? 1 : format == kUnicodeFormat ? 2 : 0;
    const char* const bytes = static_cast<const char*>(text);
    return character > 0 &&
           std::all_of(bytes, bytes + std::min(size, character), [](char c) { return c == 0; });
}

// As many characters as are asked for (all of them when that is below 1), of those that the program's files
// can keep.
std::wstring BeginningOfUnicode(std::string_view bytes, std::int16_t maxLen) {
    const std::wstring text = TextFromUtf16(bytes.substr(0, kLongestPreviewText));
    const std::wstring kept = WithoutLettersBeyondAnsi(std::wstring_view(text).substr(0, text.find(L'\0')));
    return maxLen > 0 ? kept.substr(0, static_cast<std::size_t>(maxLen)) : kept;
}

std::vector<std::uint8_t> EncodePicture(const MetafilePicture& picture) {
    ByteWriter writer;
    writer.Int32(picture.mappingMode);
    writer.Int32(picture.xExtent);
    writer.Int32(picture.yExtent);
    writer.Int32(picture.metafile);
    return writer.TakeImage();
}

MetafilePicture DecodePicture(ByteReader reader) {
    MetafilePicture picture;
    picture.mappingMode = reader.Int32();
    picture.xExtent = reader.Int32();
    picture.yExtent = reader.Int32();
    picture.metafile = reader.Int32();
    return picture;
}

// What stands behind the header of a damaged record, one that claims more than the file holds or is blank, is
// no record either, so the next reading is to find the file's end.
void SkipToEnd(FileHandle file) {
    const auto end = ThePlatform().files.Size(file);
    if (end) SeekClipFile(file, *end);
}

}  // namespace

CFormat::~CFormat() {
    ReleaseGlobalData(false);
}

void CFormat::ReleaseGlobalData(bool keep) {
    UnlockMemo();
    if (keep) return;
    const bool ours = !HandedOver || clipboardHasCopy_;
    if (MemHandle != DataHandle::None && ours) ThePlatform().memory.Free(MemHandle);
    MemHandle = DataHandle::None;
    HandedOver = false;
    clipboardHasCopy_ = false;
    Loaded = false;
}

void* CFormat::LockMemo() {
    if (MemHandle == DataHandle::None) return nullptr;
    if (LockedPointer == nullptr) LockedPointer = ThePlatform().memory.Lock(MemHandle);
    return LockedPointer;
}

void CFormat::UnlockMemo() {
    if (LockedPointer == nullptr || MemHandle == DataHandle::None) return;
    ThePlatform().memory.Unlock(MemHandle);
    LockedPointer = nullptr;
}

FormatNumber CFormat::Register() {
    const bool named = !FormatName.empty() && FormatName != kUnknownFormatName;
    if (FormatId == 0 || IsStandardFormat(FormatId) || !named) return FormatId;
    const FormatNumber registered = ThePlatform().clipboard.RegisterName(AnsiFromText(FormatName));
    return registered != 0 ? registered : FormatId;
}

bool CFormat::PrepareClipboard() {
    AnnouncedAs = IsGdiObjectFormat(FormatId) ? 0 : Register();
    if (AnnouncedAs != 0 && !ThePlatform().clipboard.Announce(AnnouncedAs)) AnnouncedAs = 0;
    return false;
}

bool CFormat::SetToClipboard() {
    const FormatNumber id = Register();
    // A memory block under a handle's number would be freed by the system as if it were one.
    if (MemHandle == DataHandle::None || IsGdiObjectFormat(FormatId)) return false;
    switch (FormatId) {
        case kMetafilePictureFormat:
            clipboardHasCopy_ = PutMetafilePicture();
            HandedOver = clipboardHasCopy_;
            break;
        case kEnhancedMetafileFormat:
            clipboardHasCopy_ = PutEnhancedMetafile();
            HandedOver = clipboardHasCopy_;
            break;
        default:
            UnlockMemo();
            HandedOver = ThePlatform().clipboard.Put(id, MemHandle);
    }
    return HandedOver;
}

bool CFormat::PutMetafilePicture() {
    const MetafilePort& metafiles = ThePlatform().metafiles;
    const std::int32_t metafile = MetafileFromBlock();
    if (metafile == 0) {
        ThePlatform().user.Tell(L"SetToClipboard: SetMetaFileBitsEx2 fehlgeschlagen");
        return false;
    }
    MetaFilePict.metafile = metafile;
    UnlockMemo();
    GlobalBlock picture(metafiles.PictureBlockSize());
    if (picture.Address() != nullptr) metafiles.WritePicture(MetaFilePict, picture.Address());
    if (picture.Address() != nullptr && picture.PutOnClipboard(kMetafilePictureFormat)) return true;
    ThePlatform().metafiles.Delete(metafile);
    MetaFilePict.metafile = 0;
    return false;
}

std::int32_t CFormat::MetafileFromBlock() {
    const std::int64_t size = std::int64_t{DataSize} - static_cast<std::int64_t>(kPictureHeaderSize);
    if (size < 1 || LockMemo() == nullptr) return 0;
    return ThePlatform().metafiles.Create(LockedPointer, static_cast<std::size_t>(size));
}

bool CFormat::PutEnhancedMetafile() {
    if (DataLength < 1 || LockMemo() == nullptr) return false;
    MetafilePort& metafiles = ThePlatform().metafiles;
    const DataHandle metafile = metafiles.CreateEnhanced(LockedPointer, static_cast<std::size_t>(DataLength));
    UnlockMemo();
    if (metafile == DataHandle::None) return false;
    if (ThePlatform().clipboard.Put(kEnhancedMetafileFormat, metafile)) return true;
    metafiles.DeleteEnhanced(metafile);
    return false;
}

bool CFormat::SetClipboardFromFile(const std::wstring& fileName) {
    const FileOwner file(OpenClipFile(fileName, false, true));
    return file.IsSet() && SetClipboardFromFile(file.Get());
}

bool CFormat::SetClipboardFromFile(FileHandle file) {
    const bool set = LoadDataFromFile(file, true) && SetToClipboard();
    ReleaseGlobalData(false);
    return set;
}

bool CFormat::LoadFromFile(FileHandle file, bool loadData) {
    ReleaseGlobalData(false);
    try {
        if (!ReadHeader(file)) return false;
    } catch (const std::bad_alloc&) {
        return false;
    }
    if (loadData) {
        if (!LoadDataFromFile(file, true)) {
            ThePlatform().user.Tell(L"LoadFromFile fehlgeschlagen mit Fehlercode: " + NumberText(readError_));
            return false;
        }
    } else if (!SeekClipFile(file, std::int64_t{DataOffset} + DataSize)) {
        return false;
    }
    Loaded = loadData;
    return true;
}

bool CFormat::ReadHeader(FileHandle file) {
    const auto start = TellClipFile(file);
    const auto left = RemainingInClipFile(file);
    constexpr std::int64_t kSizes = kRecordIdSize + kRecordNameLengthSize + kRecordDataSizeSize;
    if (!start || !left || *left < kSizes) return false;

    std::array<std::uint8_t, kRecordIdSize + kRecordNameLengthSize> front;
    if (!ReadBytes(file, front.data(), front.size())) return false;
    ByteReader frontFields(front.data(), front.size());
    FormatId = frontFields.Int32();
    const std::int16_t nameLength = frontFields.Int16();
    Blank = FormatId == 0 && nameLength == 0;
    if (Blank) SkipToEnd(file);
    if (Blank || nameLength < 0) return false;
    const std::int64_t headerSize = kSizes + nameLength;
    if (*left < headerSize) {
        SkipToEnd(file);
        return false;
    }

    std::string rest(static_cast<std::size_t>(nameLength) + kRecordDataSizeSize, ' ');
    if (!ReadBytes(file, rest.data(), rest.size())) return false;
    const auto nameSize = static_cast<std::size_t>(nameLength);
    FormatName = TextFromAnsi(std::string_view(rest).substr(0, nameSize));
    DataSize = ByteReader(rest.data() + nameSize, kRecordDataSizeSize).Int32();
    if (DataSize < 0) return false;
    const std::int64_t offset = *start + headerSize;
    if (*left - headerSize < DataSize || offset + DataSize > kLongestClipFile) {
        SkipToEnd(file);
        return false;
    }
    DataOffset = static_cast<std::int32_t>(offset);
    return true;
}

bool CFormat::LoadDataFromFile(FileHandle file, bool unlockAfter) {
    ReleaseGlobalData(false);
    readError_ = kErrorHandleEof;
    if (!ReadData(file)) {
        ReleaseGlobalData(false);
        return false;
    }
    if (unlockAfter) UnlockMemo();
    Loaded = true;
    return true;
}

bool CFormat::ReadData(FileHandle file) {
    if (DataOffset < 0 || DataSize < 1) return false;
    if (TellClipFile(file) != DataOffset && !SeekClipFile(file, DataOffset)) return false;
    const auto left = RemainingInClipFile(file);
    if (!left || *left < DataSize) return false;

    std::int32_t header = 0;
    if (FormatId == kMetafilePictureFormat) {
        header = static_cast<std::int32_t>(kPictureHeaderSize);
        if (DataSize <= header) return false;
        std::array<std::uint8_t, kPictureHeaderSize> bytes;
        if (!ReadBytes(file, bytes.data(), bytes.size())) return false;
        MetaFilePict = DecodePicture(ByteReader(bytes.data(), bytes.size()));
    }

    DataLength = DataSize - header;
    MemHandle = ThePlatform().memory.Allocate(static_cast<std::size_t>(DataLength));
    HandedOver = false;
    if (LockMemo() == nullptr) {
        readError_ = kErrorNotEnoughMemory;
        return false;
    }
    return ReadBytes(file, LockedPointer, static_cast<std::size_t>(DataLength));
}

bool CFormat::ReadBytes(FileHandle file, void* buffer, std::size_t size) {
    FilePort& files = ThePlatform().files;
    const auto read = files.Read(file, buffer, static_cast<std::uint32_t>(size));
    BytesTransferred = read.value_or(0);
    if (!read) readError_ = files.LastError();
    return read == size;
}

bool CFormat::LoadAndSaveFormat(FileHandle file) {
    Loaded = false;
    WriteError = 0;
    bool saved = false;
    Succeeds([&] { saved = SaveFromClipboard(file); });
    if (!saved) Reset();
    return saved;
}

bool CFormat::SaveFromClipboard(FileHandle file) {
    if (IsGdiObjectFormat(FormatId)) return false;
    const DataHandle data = Delivered ? *Delivered : ThePlatform().clipboard.Data(FormatId);
    HasContent = FormatId != kLocaleFormat;
    if (data == DataHandle::None || file == FileHandle::None) return false;
    switch (FormatId) {
        case kMetafilePictureFormat:
            return WriteMetafilePicture(file, data);
        case kEnhancedMetafileFormat:
            return WriteEnhancedMetafile(file, data);
        default:
            return WriteBlock(file, data);
    }
}

bool CFormat::WriteBlock(FileHandle file, DataHandle block) {
    std::size_t size = ThePlatform().memory.Size(block);
    if (!MayBeStored(size)) return false;
    const BlockLock lock(block);
    if (lock.Address() == nullptr) return false;
    if (IsEmptyText(FormatId, lock.Address(), size)) HasContent = false;
    if (FormatId == kTextFormat) {
        size = StoredTextSize(lock.Address(), size);
        if (Options().NewtextMode == 1) {
            const auto length = std::min(static_cast<std::int32_t>(size), kLongestPreviewText);
            PreviewText = ConvertHandleToString(lock.Address(), length, Options().NewMaxLen);
        }
    }
    if (FormatId == kUnicodeFormat && Options().NewtextMode == 1) {
        PreviewText =
            BeginningOfUnicode({static_cast<const char*>(lock.Address()), size}, Options().NewMaxLen);
    }
    return WriteHeader(file, size) && WriteBytes(file, lock.Address(), size);
}

bool CFormat::WriteMetafilePicture(FileHandle file, DataHandle block) {
    MetafilePort& metafiles = ThePlatform().metafiles;
    // Blocks may be larger than what was asked of the system for them.
    if (ThePlatform().memory.Size(block) < metafiles.PictureBlockSize()) return false;
    const BlockLock lock(block);
    if (lock.Address() == nullptr) return false;
    MetaFilePict = metafiles.ReadPicture(lock.Address());
    const std::size_t size = metafiles.BitsSize(MetaFilePict.metafile);
    if (!MayBeStored(size)) return false;
    const GlobalBlock bits(size);
    if (bits.Address() == nullptr) return false;
    if (!metafiles.GetBits(MetaFilePict.metafile, bits.Address(), size)) return false;
    const auto header = EncodePicture(MetaFilePict);
    return WriteHeader(file, header.size() + size) && WriteBytes(file, header.data(), header.size()) &&
           WriteBytes(file, bits.Address(), size);
}

bool CFormat::WriteEnhancedMetafile(FileHandle file, DataHandle metafile) {
    MetafilePort& metafiles = ThePlatform().metafiles;
    const std::size_t size = metafiles.EnhancedBitsSize(metafile);
    if (!MayBeStored(size)) return false;
    const GlobalBlock bits(size);
    if (bits.Address() == nullptr) return false;
    if (!metafiles.GetEnhancedBits(metafile, bits.Address(), size)) return false;
    return WriteHeader(file, size) && WriteBytes(file, bits.Address(), size);
}

bool CFormat::WriteHeader(FileHandle file, std::size_t size) {
    const std::string name = AnsiFromText(FormatName);
    if (!FitsIntoFile(file, name.size(), size)) return false;
    ByteWriter id, nameLength, dataSize;
    id.Int32(FormatId);
    nameLength.Int16(static_cast<std::int16_t>(name.size()));
    dataSize.Int32(static_cast<std::int32_t>(size));
    return WriteBytes(file, id.Image().data(), kRecordIdSize) &&
           WriteBytes(file, nameLength.Image().data(), kRecordNameLengthSize) &&
           WriteBytes(file, name.data(), name.size()) &&
           WriteBytes(file, dataSize.Image().data(), kRecordDataSizeSize);
}

bool CFormat::FitsIntoFile(FileHandle file, std::size_t nameSize, std::size_t size) {
    const auto start = TellClipFile(file);
    if (!start) {
        WriteError = ThePlatform().files.LastError();
        return false;
    }
    const std::size_t record = kRecordIdSize + kRecordNameLengthSize + nameSize + kRecordDataSizeSize + size;
    const bool nameFits = nameSize <= static_cast<std::size_t>(std::numeric_limits<std::int16_t>::max());
    if (nameFits && *start + static_cast<std::int64_t>(record) <= kLongestClipFile) return true;
    WriteError = kErrorFileTooLarge;
    return false;
}

bool CFormat::WriteBytes(FileHandle file, const void* bytes, std::size_t size) {
    FilePort& files = ThePlatform().files;
    const char* next = static_cast<const char*>(bytes);
    BytesTransferred = 0;
    while (size > 0) {
        const auto piece = static_cast<std::uint32_t>(std::min(size, kWritePiece));
        const auto written = files.Write(file, next, piece);
        BytesTransferred += written.value_or(0);
        if (written != piece) {
            // A write that takes only a part without an error is the disk's way to say that it is full.
            WriteError = written ? kErrorDiskFull : files.LastError();
            return false;
        }
        next += piece;
        size -= piece;
    }
    return true;
}

void CFormat::Reset() {
    ReleaseGlobalData(false);
    Delivered.reset();
    HasContent = false;
    FormatId = 0;
    FormatName.clear();
    DataSize = 0;
    DataOffset = 0;
    DataLength = 0;
    PreviewText.clear();
    MetaFilePict = {};
    BytesTransferred = 0;
}

bool CFormat::Get_ID_Name(FormatNumber id) {
    FormatId = id;
    FormatName = FormatNameOf(id);
    return true;
}

std::wstring CFormat::GetText(std::int32_t maxLen) const {
    // DataSize counts a metafile picture's header, which is not in the block.
    return ConvertHandleToString(LockedPointer, std::min(DataSize, DataLength), maxLen);
}

std::wstring CFormat::ConvertHandleToString(const void* pointer, std::int32_t size, std::int32_t maxLen) {
    if (size < 1 || pointer == nullptr) return {};
    const std::int32_t count = maxLen > 0 ? std::min(maxLen, size) : size;
    return TextFromAnsi({static_cast<const char*>(pointer), static_cast<std::size_t>(count)});
}
