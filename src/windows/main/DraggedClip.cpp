#include "windows/main/DraggedClip.h"

#include <ole2.h>
#include <shlobj.h>

#include <algorithm>
#include <cstring>
#include <iterator>

#include "engine/clipboard/OrdinaryFile.h"
#include "platform/Guard.h"
#include "platform/win32/LateFunction.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr CLIPFORMAT kFiles = CF_HDROP;

CLIPFORMAT Registered(const wchar_t* name) {
    return static_cast<CLIPFORMAT>(RegisterClipboardFormatW(name));
}

CLIPFORMAT DescriptorFormat() {
    static const CLIPFORMAT format = Registered(CFSTR_FILEDESCRIPTORW);
    return format;
}

CLIPFORMAT ContentsFormat() {
    static const CLIPFORMAT format = Registered(CFSTR_FILECONTENTS);
    return format;
}

CLIPFORMAT EffectFormat() {
    static const CLIPFORMAT format = Registered(CFSTR_PREFERREDDROPEFFECT);
    return format;
}

FORMATETC FormatIn(CLIPFORMAT number, DWORD medium) {
    FORMATETC format{};
    format.cfFormat = number;
    format.dwAspect = DVASPECT_CONTENT;
    format.lindex = -1;
    format.tymed = medium;
    return format;
}

FORMATETC BlockOf(CLIPFORMAT number) {
    return FormatIn(number, TYMED_HGLOBAL);
}

HRESULT PutBlock(const void* bytes, std::size_t size, STGMEDIUM& medium) {
    // A block of no bytes could not be locked.
    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, std::max<std::size_t>(size, 1));
    if (block == nullptr) return E_OUTOFMEMORY;
    void* const address = GlobalLock(block);
    if (address == nullptr) {
        GlobalFree(block);
        return E_OUTOFMEMORY;
    }
    std::memcpy(address, bytes, size);
    GlobalUnlock(block);
    medium.tymed = TYMED_HGLOBAL;
    medium.hGlobal = block;
    medium.pUnkForRelease = nullptr;
    return S_OK;
}

// With a block, whose size may be larger than what it was made for, nobody could tell where the file ends;
// a stream knows.
HRESULT PutStream(const Bytes& bytes, STGMEDIUM& medium) {
    STGMEDIUM block{};
    const HRESULT made = PutBlock(bytes.data(), bytes.size(), block);
    if (FAILED(made)) return made;
    static const auto create =
        LateFunction<decltype(&CreateStreamOnHGlobal)>(L"ole32.dll", "CreateStreamOnHGlobal");
    IStream* stream = nullptr;
    const HRESULT result = create != nullptr ? create(block.hGlobal, TRUE, &stream) : E_NOTIMPL;
    if (FAILED(result)) {
        GlobalFree(block.hGlobal);
        return result;
    }
    ULARGE_INTEGER size;
    size.QuadPart = bytes.size();
    stream->SetSize(size);
    medium.tymed = TYMED_ISTREAM;
    medium.pstm = stream;  // the receiver's
    medium.pUnkForRelease = nullptr;
    return S_OK;
}

HRESULT PutDescriptor(const std::vector<ClipAsFiles::File>& files, STGMEDIUM& medium) {
    const std::size_t size = sizeof(FILEGROUPDESCRIPTORW) + (files.size() - 1) * sizeof(FILEDESCRIPTORW);
    Bytes bytes(size);
    auto* const group = reinterpret_cast<FILEGROUPDESCRIPTORW*>(bytes.data());
    group->cItems = static_cast<UINT>(files.size());
    for (std::size_t i = 0; i < files.size(); ++i) {
        FILEDESCRIPTORW& file = group->fgd[i];
        file.dwFlags = FD_ATTRIBUTES | FD_PROGRESSUI;
        file.dwFileAttributes = FILE_ATTRIBUTE_NORMAL;
        const std::size_t length = std::min(files[i].name.size(), std::size(file.cFileName) - 1);
        std::copy_n(files[i].name.begin(), length, file.cFileName);
    }
    return PutBlock(bytes.data(), bytes.size(), medium);
}

}  // namespace

DraggedNodeData::DraggedNodeData(const DraggedNode& payload, ChosenNodes nodes)
    : payload_(DraggedNodeBytes(payload)),
      files_(nodes),
      formats_{NodeFormat(), BlockOf(DescriptorFormat()), FormatIn(ContentsFormat(), TYMED_ISTREAM),
               BlockOf(EffectFormat())} {}

FORMATETC DraggedNodeData::NodeFormat() {
    return BlockOf(static_cast<CLIPFORMAT>(DraggedNodeFormat()));
}

std::span<const FORMATETC> DraggedNodeData::Formats() const noexcept {
    return std::span(formats_).first(files_.Files().empty() ? 1 : formats_.size());
}

HRESULT DraggedNodeData::QueryGetData(FORMATETC* format) noexcept {
    const auto formats = Formats();
    const bool offered = std::any_of(formats.begin(), formats.end(), [&](const FORMATETC& known) {
        return known.cfFormat == format->cfFormat && (known.tymed & format->tymed) != 0;
    });
    return offered ? S_OK : DV_E_FORMATETC;
}

HRESULT DraggedNodeData::GetData(FORMATETC* format, STGMEDIUM* medium) noexcept {
    return Guarded<HRESULT>(E_UNEXPECTED, [&] {
        const HRESULT offered = QueryGetData(format);
        return offered == S_OK ? Give(*format, *medium) : offered;
    });
}

HRESULT DraggedNodeData::Give(const FORMATETC& format, STGMEDIUM& medium) const {
    if (format.cfFormat == NodeFormat().cfFormat) return PutBlock(payload_.data(), payload_.size(), medium);
    if (format.cfFormat == DescriptorFormat()) return PutDescriptor(files_.Files(), medium);
    // The clip stays: a receiver that moves must not expect it to go.
    constexpr DWORD kCopies = DROPEFFECT_COPY;
    if (format.cfFormat == EffectFormat()) return PutBlock(&kCopies, sizeof kCopies, medium);
    const auto index = static_cast<std::size_t>(std::max<LONG>(format.lindex, 0));
    if (index >= files_.Files().size()) return DV_E_LINDEX;
    const auto bytes = files_.Bytes(index);
    return bytes ? PutStream(*bytes, medium) : STG_E_READFAULT;
}

HRESULT DraggedNodeData::EnumFormatEtc(DWORD direction, IEnumFORMATETC** enumerator) noexcept {
    static const auto create =
        LateFunction<decltype(&SHCreateStdEnumFmtEtc)>(L"shell32.dll", "SHCreateStdEnumFmtEtc");
    if (direction != DATADIR_GET || create == nullptr) return E_NOTIMPL;
    return create(static_cast<UINT>(Formats().size()), Formats().data(), enumerator);
}

bool AreFiles(IDataObject* data) {
    FORMATETC format = BlockOf(kFiles);
    return data->QueryGetData(&format) == S_OK;
}

std::vector<std::wstring> DraggedPaths(IDataObject* data) {
    FORMATETC format = BlockOf(kFiles);
    STGMEDIUM medium{};
    if (FAILED(data->GetData(&format, &medium))) return {};
    Bytes bytes;
    if (const auto* const block = static_cast<const std::uint8_t*>(GlobalLock(medium.hGlobal))) {
        bytes.assign(block, block + GlobalSize(medium.hGlobal));
        GlobalUnlock(medium.hGlobal);
    }
    ReleaseStgMedium(&medium);
    return PathsIn({kFiles, L"", 0, 0}, bytes);
}
