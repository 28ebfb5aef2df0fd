#include "windows/controls/PngDecoder.h"

// The picture decoders of the system need <windows.h> in front of them.
#include <windows.h>

#include <wincodec.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <vector>

#include "engine/clipboard/DibLayout.h"
#include "engine/views/CheckerBoard.h"
#include "engine/views/PngSize.h"
#include "windows/controls/ComObject.h"
#include "windows/controls/Ole.h"
#include "windows/controls/ScreenBitmap.h"

namespace {

// The interface that a call hands out through its last argument; null when the call fails.
template <typename Interface, typename Call>
ComOwned<Interface> Made(Call call) {
    Interface* made = nullptr;
    const HRESULT result = call(&made);
    ComOwned<Interface> object(made);
    return SUCCEEDED(result) ? std::move(object) : nullptr;
}

ComOwned<IWICImagingFactory> Factory() {
    return Made<IWICImagingFactory>([](IWICImagingFactory** factory) {
        return CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER,
                                __uuidof(IWICImagingFactory), reinterpret_cast<void**>(factory));
    });
}

// The first frame, as pixels of blue, green, red and alpha; null when it is none.
ComOwned<IWICFormatConverter> OpenFrame(IWICImagingFactory& factory, IStream& stream) {
    const auto decoder = Made<IWICBitmapDecoder>([&](IWICBitmapDecoder** made) {
        return factory.CreateDecoder(GUID_ContainerFormatPng, nullptr, made);
    });
    if (!decoder || FAILED(decoder->Initialize(&stream, WICDecodeMetadataCacheOnDemand))) return nullptr;
    const auto frame =
        Made<IWICBitmapFrameDecode>([&](IWICBitmapFrameDecode** made) { return decoder->GetFrame(0, made); });
    auto converter = Made<IWICFormatConverter>(
        [&](IWICFormatConverter** made) { return factory.CreateFormatConverter(made); });
    const bool converts =
        frame && converter &&
        SUCCEEDED(converter->Initialize(frame.get(), GUID_WICPixelFormat32bppBGRA, WICBitmapDitherTypeNone,
                                        nullptr, 0, WICBitmapPaletteTypeCustom));
    return converts ? std::move(converter) : nullptr;
}

// Reads some rows of a picture at a time, in few pieces, since some decoders begin again for each of them.
class Pieces {
 public:
    Pieces(IWICFormatConverter& picture, const PngSize& size, std::uint32_t factor)
        : picture_(picture), size_(size), rows_(Rounded(size.height / kMostPieces + 1, factor)) {}

    std::uint32_t Rows() const { return rows_; }
    // Fills `pixels` with the `count` rows from `first` on.
    bool Read(std::uint32_t first, std::uint32_t count, std::span<std::uint8_t> pixels) {
        const WICRect rows{0, static_cast<INT>(first), static_cast<INT>(size_.width),
                           static_cast<INT>(count)};
        return SUCCEEDED(
            picture_.CopyPixels(&rows, 4 * size_.width, static_cast<UINT>(pixels.size()), pixels.data()));
    }

 private:
    static constexpr std::uint32_t kMostPieces = 64;
    static std::uint32_t Rounded(std::uint32_t rows, std::uint32_t factor) {
        return (rows + factor - 1) / factor * factor;
    }

    IWICFormatConverter& picture_;
    PngSize size_;
    std::uint32_t rows_;
};

// Into `pixels`, which has room for as many rows as are left of it.
bool DecodeInto(std::span<std::uint8_t> pixels, IWICFormatConverter& picture, const PngSize& size,
                std::uint32_t factor, const std::atomic<bool>& stopped) {
    Pieces pieces(picture, size, factor);
    const std::size_t rowBytes = std::size_t{4} * size.width;
    const std::size_t reducedBytes = std::size_t{4} * ((size.width + factor - 1) / factor);
    std::vector<std::uint8_t> piece(factor > 1 ? pieces.Rows() * rowBytes : 0);
    for (std::uint32_t row = 0; row < size.height; row += pieces.Rows()) {
        if (stopped) return false;
        const std::uint32_t count = std::min(pieces.Rows(), size.height - row);
        if (factor == 1) {
            if (!pieces.Read(row, count, pixels.subspan(row * rowBytes, count * rowBytes))) return false;
            continue;
        }
        const std::span<std::uint8_t> read(piece.data(), count * rowBytes);
        if (!pieces.Read(row, count, read)) return false;
        for (std::uint32_t first = 0; first < count; first += factor)
            ReduceRows(read.subspan(first * rowBytes, std::min(factor, count - first) * rowBytes), size.width,
                       factor, pixels.subspan((row + first) / factor * reducedBytes, reducedBytes));
    }
    return true;
}

std::optional<PreviewBytes> Decode(IWICImagingFactory& factory, IStream& png,
                                   const std::atomic<bool>& stopped) {
    const auto picture = OpenFrame(factory, png);
    UINT width = 0;
    UINT height = 0;
    if (!picture || FAILED(picture->GetSize(&width, &height))) return std::nullopt;
    const PngSize size{width, height};
    if (size.Pixels() == 0 || size.Pixels() > std::uint64_t{kMostDibPixels}) return std::nullopt;

    const std::uint32_t factor = ReductionOf(size);
    const std::uint32_t columns = (width + factor - 1) / factor;
    const std::uint32_t rows = (height + factor - 1) / factor;
    const BITMAPINFOHEADER header = TopDownHeader(static_cast<int>(columns), static_cast<int>(rows));
    const std::size_t pixelBytes = std::size_t{4} * columns * rows;
    PreviewBytes dib(sizeof header + pixelBytes);
    if (dib.size == 0) return std::nullopt;
    std::memcpy(dib.bytes.get(), &header, sizeof header);
    const std::span<std::uint8_t> pixels(dib.bytes.get() + sizeof header, pixelBytes);
    if (!DecodeInto(pixels, *picture, size, factor, stopped)) return std::nullopt;
    BlendOverCheckerBoard(pixels, columns);
    return dib;
}

}  // namespace

std::optional<PreviewBytes> DecodePng(std::span<const std::uint8_t> png) {
    static constexpr std::atomic<bool> kNever = false;
    const auto factory = NeedOle() ? Factory() : nullptr;
    if (!factory) return std::nullopt;
    const auto stream = Made<IWICStream>([&](IWICStream** made) { return factory->CreateStream(made); });
    if (!stream ||
        FAILED(stream->InitializeFromMemory(const_cast<BYTE*>(png.data()), static_cast<DWORD>(png.size()))))
        return std::nullopt;
    return Decode(*factory, *stream, kNever);
}

std::optional<PreviewBytes> DecodePng(IStream& png, const std::atomic<bool>& stopped) {
    const auto factory = Factory();
    return factory ? Decode(*factory, png, stopped) : std::nullopt;
}
