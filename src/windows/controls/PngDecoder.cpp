#include "windows/controls/PngDecoder.h"

// The picture decoders of the system need <windows.h> in front of them.
#include <windows.h>

#include <wincodec.h>

#include <cstring>
#include <memory>

#include "engine/clipboard/DibLayout.h"
#include "engine/views/CheckerBoard.h"
#include "windows/controls/Ole.h"

namespace {

struct ComRelease {
    void operator()(IUnknown* object) const { object->Release(); }
};
template <typename Interface>
using ComPointer = std::unique_ptr<Interface, ComRelease>;

// The interface that a call hands out through its last argument; null when the call fails.
template <typename Interface, typename Call>
ComPointer<Interface> Made(Call call) {
    Interface* made = nullptr;
    const HRESULT result = call(&made);
    ComPointer<Interface> object(made);
    return SUCCEEDED(result) ? std::move(object) : nullptr;
}

ComPointer<IWICImagingFactory> Factory() {
    if (!NeedOle()) return nullptr;
    return Made<IWICImagingFactory>([](IWICImagingFactory** factory) {
        return CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER,
                                __uuidof(IWICImagingFactory), reinterpret_cast<void**>(factory));
    });
}

// The first frame, as pixels of blue, green, red and alpha; null when it is none.
ComPointer<IWICFormatConverter> OpenFrame(IWICImagingFactory& factory, IWICStream& stream) {
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

BITMAPINFOHEADER HeaderOf(UINT width, UINT height) {
    BITMAPINFOHEADER header{};
    header.biSize = sizeof header;
    header.biWidth = static_cast<LONG>(width);
    header.biHeight = -static_cast<LONG>(height);
    header.biPlanes = 1;
    header.biBitCount = 32;
    return header;
}

}  // namespace

std::optional<PreviewBytes> DecodePng(std::span<const std::uint8_t> png) {
    const auto factory = Factory();
    if (!factory) return std::nullopt;
    const auto stream = Made<IWICStream>([&](IWICStream** made) { return factory->CreateStream(made); });
    if (!stream ||
        FAILED(stream->InitializeFromMemory(const_cast<BYTE*>(png.data()), static_cast<DWORD>(png.size()))))
        return std::nullopt;
    const auto picture = OpenFrame(*factory, *stream);
    UINT width = 0;
    UINT height = 0;
    if (!picture || FAILED(picture->GetSize(&width, &height)) || width == 0 || height == 0 ||
        static_cast<std::int64_t>(width) * height > kMostDibPixels)
        return std::nullopt;

    const BITMAPINFOHEADER header = HeaderOf(width, height);
    const std::size_t pixelBytes = std::size_t{4} * width * height;
    PreviewBytes dib(sizeof header + pixelBytes);
    if (dib.size == 0) return std::nullopt;
    std::memcpy(dib.bytes.get(), &header, sizeof header);
    std::uint8_t* const pixels = dib.bytes.get() + sizeof header;
    if (FAILED(picture->CopyPixels(nullptr, 4 * width, static_cast<UINT>(pixelBytes), pixels)))
        return std::nullopt;
    BlendOverCheckerBoard({pixels, pixelBytes}, width);
    return dib;
}
