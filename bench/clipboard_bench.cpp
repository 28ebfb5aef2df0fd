#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>
#include <vector>

#include "engine/clipboard/CClipBoard.h"
#include "engine/clipboard/FormatNames.h"
#include "engine/clipboard/modClipboard.h"
#include "engine/clipboard/modFileIO.h"
#include "fake/FakePlatform.h"

namespace {

constexpr const wchar_t* kClip = L"C:\\C1.nxc";
constexpr std::size_t kMegabyte = std::size_t{1} << 20;

std::int16_t Save(CClipBoard& clipBoard, WindowHandle window) {
    std::int16_t count = 0;
    OpenClipboardScope clipboard(window);
    ThePlatform().files.Remove(kClip);  // a clip file is never made over another
    FileOwner file(OpenClipFile(kClip, true, false));
    for (CFormat& format : *clipBoard.GetClipboardFormats()) {
        if (format.LoadAndSaveFormat(file.Get())) ++count;
    }
    return count;
}

// Selecting a clip in the tree and putting one on the clipboard read all headers. The time must grow with the
// number of formats alone, not with their size.
void ReadHeaders(benchmark::State& state) {
    FakePlatform machine;
    const auto formats = static_cast<std::int16_t>(state.range(0));
    const std::string data(static_cast<std::size_t>(state.range(1)), 'x');
    std::vector<FakeClipboard::Offer> offers;
    for (int i = 0; i < formats; ++i) {
        const std::string name = "Private Format " + std::to_string(i);
        offers.push_back(FakeClipboard::Bytes(machine.clipboard.RegisterName(name), data));
    }
    machine.clipboard.OtherProgramCopies(offers);
    const WindowHandle window = machine.windows.AddWindow(L"NXClip");
    CClipBoard clipBoard;
    if (Save(clipBoard, window) != formats) state.SkipWithError("not every format was saved");

    for (auto _ : state) {
        FileOwner file(OpenClipFile(kClip, false, true));
        benchmark::DoNotOptimize(clipBoard.LoadFormatsByHandle(file.Get(), formats));
    }
    state.SetItemsProcessed(state.iterations() * formats);
}
BENCHMARK(ReadHeaders)
    ->ArgNames({"formats", "bytes"})
    ->Args({20, 1000})
    ->Args({500, 1000})
    ->Args({500, 100'000});

// A picture of 30 MB from the clipboard to the file. What the machine takes is part of it.
void CaptureLargePicture(benchmark::State& state) {
    FakePlatform machine;
    const std::size_t size = 30 * kMegabyte;
    machine.clipboard.OtherProgramCopies({FakeClipboard::Bytes(kDibFormat, std::string(size, 'x'))});
    const WindowHandle window = machine.windows.AddWindow(L"NXClip");
    CClipBoard clipBoard;
    for (auto _ : state) {
        if (Save(clipBoard, window) != 1) state.SkipWithError("the picture was not saved");
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(size));
}
BENCHMARK(CaptureLargePicture)->Unit(benchmark::kMillisecond);

}  // namespace
