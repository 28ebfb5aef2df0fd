// The search through names and contents, beside programs that read the same files with the fewest calls. The
// files are real ones, in the system's directory for what is temporary.

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <malloc.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "engine/profiles/modProfile.h"
#include "engine/search/ContentSearch.h"
#include "engine/search/NodeSearch.h"
#include "engine/tree/TestTree.h"
#include "engine/views/HitList.h"
#include "fake/FakePlatform.h"
#include "platform/ByteBuffer.h"
#include "platform/Text.h"

namespace {

std::string SystemPath(const std::wstring& path) {
    std::string name(path.begin(), path.end());
    for (char& letter : name)
        if (letter == '\\') letter = '/';
    return name;
}

// Files of the machine that the bench runs on, to be read.
class RealFiles : public FakeFiles {
 public:
    using FakeFiles::FakeFiles;

    FileHandle Open(const std::wstring& path, FileUse) override {
        return static_cast<FileHandle>(open(SystemPath(path).c_str(), O_RDONLY) + 1);
    }
    void Close(FileHandle file) override { close(Number(file)); }
    std::optional<std::uint32_t> Read(FileHandle file, void* buffer, std::uint32_t size) override {
        const ssize_t count = read(Number(file), buffer, size);
        return count < 0 ? std::nullopt : std::optional(static_cast<std::uint32_t>(count));
    }
    bool Seek(FileHandle file, std::int64_t position) override {
        return lseek(Number(file), position, SEEK_SET) == position;
    }
    std::optional<std::int64_t> Size(FileHandle file) override {
        struct stat found {};
        return fstat(Number(file), &found) == 0 ? std::optional<std::int64_t>(found.st_size) : std::nullopt;
    }

 private:
    static int Number(FileHandle file) { return static_cast<int>(file) - 1; }
};

constexpr std::size_t kLongText = std::size_t{30} << 20;

std::string UnicodeRecord(std::u16string text) {
    ByteWriter writer;
    writer.Int32(13);
    writer.Int16(7);
    writer.Bytes("Unicode", 7);
    text += u'\0';
    writer.Int32(static_cast<std::int32_t>(2 * text.size()));
    writer.Bytes(text.data(), 2 * text.size());
    return {writer.Image().begin(), writer.Image().end()};
}

// Text of German words; the one that is looked for stands at the end of every thousandth.
std::u16string TextOf(std::size_t units, bool withWord) {
    static constexpr std::u16string_view kWords =
        u"Sehr geehrte Damen und Herren, für die Übersendung danken wir. ";
    std::u16string text;
    while (text.size() < units)
        text += kWords;
    text.resize(units);
    if (withWord) text.replace(units - 8, 8, u"Nadelöhr");
    return text;
}

// Clips on the disk, and their plan; they go with it.
struct Clips {
    explicit Clips(std::size_t count, std::size_t units, bool lastOnly = false) {
        std::filesystem::create_directories(directory);
        plan.query = ParseSearchQuery(L"nadelöhr");
        plan.directories = {std::wstring(directory.begin(), directory.end())};
        for (std::size_t i = 0; i < count; ++i) {
            const auto number = static_cast<std::int32_t>(i + 1);
            plan.clips.push_back({0, number, 1, 0});
            const std::string bytes = UnicodeRecord(TextOf(units, lastOnly || i % 1000 == 999));
            std::ofstream(SystemPath(plan.PathOf(plan.clips.back())), std::ios::binary) << bytes;
        }
    }
    ~Clips() { std::filesystem::remove_all(directory); }

    std::string directory =
        (std::filesystem::temp_directory_path() / ("nxclip-bench-" + std::to_string(getpid()))).string();
    FakePlatform machine;
    RealFiles files{machine.ledger, machine.failures, machine.clock};
    SearchPlan plan;
};

struct Counted : SearchSink {
    bool GoesOn(std::size_t) override { return true; }
    void Found(std::size_t, ContentHit hit) override {
        if (hits++ == 0) first = std::chrono::steady_clock::now();
        benchmark::DoNotOptimize(hit);
    }
    void Unreadable(std::size_t) override { ++unreadable; }

    int hits = 0;
    int unreadable = 0;
    std::chrono::steady_clock::time_point first;
};

void Search(benchmark::State& state, Clips& clips) {
    double firstHit = 0;
    int hits = 0;
    for (auto _ : state) {
        Counted counted;
        const auto begin = std::chrono::steady_clock::now();
        ContentSearch(clips.files, clips.plan).Run(counted);
        firstHit = std::chrono::duration<double, std::milli>(counted.first - begin).count();
        hits = counted.hits;
        if (counted.hits == 0 || counted.unreadable > 0) state.SkipWithError("not found");
    }
    state.counters["hits"] = hits;
    state.counters["first_hit_ms"] = firstHit;
}

// The floor: the same files, opened, read into one buffer and closed.
void ReadAll(benchmark::State& state, Clips& clips, std::size_t most) {
    std::vector<char> buffer(most);
    std::vector<std::string> paths;
    for (const ClipTarget& clip : clips.plan.clips)
        paths.push_back(SystemPath(clips.plan.PathOf(clip)));
    for (auto _ : state) {
        for (const std::string& path : paths) {
            const int file = open(path.c_str(), O_RDONLY);
            benchmark::DoNotOptimize(read(file, buffer.data(), buffer.size()));
            close(file);
        }
    }
}

void SearchSmallClips(benchmark::State& state) {
    Clips clips(static_cast<std::size_t>(state.range(0)), 500);
    Search(state, clips);
}
BENCHMARK(SearchSmallClips)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

void SearchSmallClipsFloor(benchmark::State& state) {
    Clips clips(static_cast<std::size_t>(state.range(0)), 500);
    ReadAll(state, clips, 16 << 10);
}
BENCHMARK(SearchSmallClipsFloor)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

void SearchLongText(benchmark::State& state) {
    Clips clips(1, kLongText / 2, true);
    Search(state, clips);
}
BENCHMARK(SearchLongText)->Unit(benchmark::kMillisecond);

void SearchLongTextFloor(benchmark::State& state) {
    Clips clips(1, kLongText / 2, true);
    ReadAll(state, clips, kLongText + 100);
}
BENCHMARK(SearchLongTextFloor)->Unit(benchmark::kMillisecond);

// Also without regard to marks, when nothing fits otherwise.
void SearchSmallClipsByLetters(benchmark::State& state) {
    Clips clips(10'000, 500);
    clips.plan.likeness = Likeness::Letters;
    Search(state, clips);
}
BENCHMARK(SearchSmallClipsByLetters)->Unit(benchmark::kMillisecond);

// A key: the names of all nodes, and the plan for their contents.
void SearchNames(benchmark::State& state) {
    FakePlatform machine;
    NodeCollection nodes;
    GrowProfile(nodes, static_cast<int>(state.range(0)));
    const SearchQuery query = ParseSearchQuery(L"nirgends");
    std::size_t bytes = 0;
    for (auto _ : state) {
        const std::size_t before = mallinfo2().uordblks;
        const SearchedTree searched = SearchTree(nullptr, nodes, query, Likeness::Marks, machine.clock.now);
        bytes = mallinfo2().uordblks - before;
        if (searched.plan.clips.empty()) state.SkipWithError("nothing to look into");
    }
    state.counters["bytes"] = static_cast<double>(bytes);
}
BENCHMARK(SearchNames)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

// The next key, when all contents have been read for the keys before: what is in the list then. The second
// argument says whether all of them were hits, or none.
void SearchAsTyped(benchmark::State& state) {
    FakePlatform machine;
    NodeCollection nodes;
    GrowProfile(nodes, static_cast<int>(state.range(0)));
    const std::size_t before = mallinfo2().uordblks;
    std::size_t bytes = 0;
    for (auto _ : state) {
        state.PauseTiming();
        HitList list(nodes, machine.clock);
        list.Search(nullptr, L"nirgend");
        const std::size_t clips = list.Plan()->clips.size();
        for (std::size_t clip = 0; state.range(1) != 0 && clip < clips; ++clip)
            list.Add(clip,
                     {0, 100, {L"was davor steht, nirgends als hier, und was dahinter kommt", 17, 7}, 1000});
        list.SetRead(clips);
        bytes = mallinfo2().uordblks - before;
        state.ResumeTiming();
        list.Search(nullptr, L"nirgends");
        benchmark::DoNotOptimize(list.Content());
        state.PauseTiming();
        list.End();
        state.ResumeTiming();
    }
    state.counters["bytes"] = static_cast<double>(bytes);
}
BENCHMARK(SearchAsTyped)->ArgsProduct({{10'000, 100'000}, {0, 1}})->Unit(benchmark::kMillisecond);

}  // namespace
