// The tree of one profile, flattened, saved, loaded, walked, searched and shown. The files are the fakes' and
// cost next to nothing, so that the figures are the program's own work.

#include <benchmark/benchmark.h>

#include <malloc.h>

#include <string>

#include "engine/flows/ClipOperations.h"
#include "engine/flows/ProfileActions.h"
#include "engine/flows/Search.h"
#include "engine/process/modOption.h"
#include "engine/profiles/ProfileStore.h"
#include "engine/tree/CTreeViewEx.h"
#include "engine/tree/TestTree.h"
#include "engine/tree/TreeFile.h"
#include "engine/views/ListUpdate.h"
#include "engine/views/PreviewText.h"
#include "fake/FakePlatform.h"
#include "fake/ProcessState.h"
#include "platform/SafeFile.h"

namespace {

const std::wstring kFile = L"C:\\nxclip.nxp";

void Sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
}

// A platform and a bound tree that holds a profile of `count` nodes.
struct Bench {
    explicit Bench(std::int64_t count) {
        tree.Bind(&nodes);
        profile = &GrowProfile(nodes, static_cast<int>(count));
    }

    FakePlatform platform;
    NodeCollection nodes;
    CTreeViewEx tree;
    Node* profile = nullptr;
};

bool Save(Bench& bench) {
    return bench.tree.BuildTreeData(bench.profile) && bench.tree.SaveDataToFile(kFile);
}

void SaveWholeProfile(benchmark::State& state) {
    Bench bench(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(Save(bench));
}
BENCHMARK(SaveWholeProfile)->Apply(Sizes);

// A new clip at the end of the profile, which counts it, and its save; what is put off until nobody waits
// does not count.
void SaveCapture(benchmark::State& state) {
    Bench bench(state.range(0));
    Save(bench);
    Node& folder = *bench.profile->LastChild();
    for (auto _ : state) {
        state.PauseTiming();
        FinishSave(kFile);
        state.ResumeTiming();
        Node& clip = bench.nodes.Add(&folder, NodeRelation::Child, L"Ein neuer Clip", L"Clip");
        clip.SetTag(MakeClipTag(bench.nodes.Count(), 5, L"15.11.1999 13:10:00", L""));
        bench.profile->SetTag(MakeProfileTag(bench.nodes.Count(), L"D:\\Clips", false, L""));
        benchmark::DoNotOptimize(Save(bench));
    }
    state.counters["bytes_of_journal"] =
        static_cast<double>(bench.platform.files.Bytes(JournalPathOf(kFile))->size());
}
BENCHMARK(SaveCapture)->Apply(Sizes);

// What a clip takes of the memory, with what the machine takes for each of its blocks.
void MemoryOfNodes(benchmark::State& state) {
    for (auto _ : state) {
        const std::size_t before = mallinfo2().uordblks;
        Bench bench(state.range(0));
        state.counters["bytes_per_clip"] =
            static_cast<double>(mallinfo2().uordblks - before) / static_cast<double>(state.range(0));
    }
}
BENCHMARK(MemoryOfNodes)->Apply(Sizes)->Iterations(1);

void LoadProfile(benchmark::State& state) {
    Bench bench(state.range(0));
    Save(bench);
    bench.tree.ReleaseData();
    for (auto _ : state) {
        if (!bench.tree.LoadDataFromFile(kFile) || bench.tree.BuildSubTreeFromData(nullptr) == nullptr)
            state.SkipWithError("not loaded");
        state.PauseTiming();
        bench.nodes.Clear();
        state.ResumeTiming();
    }
}
BENCHMARK(LoadProfile)->Apply(Sizes);

void EncodeFile(benchmark::State& state) {
    Bench bench(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(EncodeNodes({bench.profile}));
}
BENCHMARK(EncodeFile)->Apply(Sizes);

void DecodeFile(benchmark::State& state) {
    Bench bench(state.range(0));
    bench.tree.BuildTreeData(bench.profile);
    const auto image = EncodeTreeData(bench.tree.Data());
    for (auto _ : state)
        benchmark::DoNotOptimize(DecodeTreeData(image));
}
BENCHMARK(DecodeFile)->Apply(Sizes);

// The whole walk, by a text that no name begins with.
void SearchWithoutHit(benchmark::State& state) {
    Bench bench(state.range(0));
    SearchCriteria criteria;
    criteria.searchText = L"nirgends";
    for (auto _ : state)
        benchmark::DoNotOptimize(SearchForNode(bench.tree, criteria, nullptr));
}
BENCHMARK(SearchWithoutHit)->Apply(Sizes);

// One profile's folder with all clips in it.
void ListFolder(benchmark::State& state) {
    Bench bench(0);
    for (std::int64_t i = 0; i < state.range(0); ++i)
        bench.nodes.Add(bench.profile, NodeRelation::Child, L"Ein Clip", L"Clip").SetTag(L"C&1,2&3&");
    CClipBoard clipBoard;
    for (auto _ : state)
        benchmark::DoNotOptimize(BuildListContent(bench.profile, clipBoard));
}
BENCHMARK(ListFolder)->Apply(Sizes);

// A profile that is the active container, with so many clips that came one after the other.
struct BenchOfDay {
    explicit BenchOfDay(std::int64_t count) {
        tree.Bind(&nodes);
        platform.files.AddDirectory(L"C:\\P");
        profile = ProfileActions(tree, container).BuildNewprofile(L"P", L"C:\\P", L"");
        for (std::int64_t i = 1; i <= count; ++i)
            nodes.Add(profile, NodeRelation::Child, L"Ein Clip " + std::to_wstring(count - i), L"Clip")
                .SetTag(MakeClipTag(static_cast<std::int32_t>(i), 2, L"15.11.1999 13:10:00", L""));
        SaveProfile(tree, *profile);
        FinishSaves();
    }
    std::vector<Node*> First(int count) const {
        std::vector<Node*> first;
        for (Node* child = profile->FirstChild(); static_cast<int>(first.size()) < count;
             child = child->Next())
            first.push_back(child);
        return first;
    }

    FakePlatform platform;
    ProcessStateScope state;
    NodeCollection nodes;
    CTreeViewEx tree;
    ActiveContainer container{tree};
    ClipOperations operations{tree, container};
    Node* profile = nullptr;
};

// What the hot key needs before the newest clip stands under the cursor, but for the drawing.
void HotKeyToFirstRow(benchmark::State& state) {
    const BenchOfDay bench(state.range(0));
    CClipBoard clipBoard;
    for (auto _ : state) {
        ListContent content = BuildListContent(bench.profile, clipBoard);
        SortEntries(content, kNewestFirst);
        benchmark::DoNotOptimize(ListText(content, 0, 0));
    }
}
BENCHMARK(HotKeyToFirstRow)->Apply(Sizes);

void SortByName(benchmark::State& state) {
    const BenchOfDay bench(state.range(0));
    CClipBoard clipBoard;
    ListContent content = BuildListContent(bench.profile, clipBoard);
    for (auto _ : state) {
        SortEntries(content, {0, false});
        SortEntries(content, {0, true});
    }
}
BENCHMARK(SortByName)->Apply(Sizes);

// Into the folder for what is deleted, saved; and back from there.
void DeleteThousandRows(benchmark::State& state) {
    BenchOfDay bench(state.range(0));
    Options().KeepDeleted = true;
    for (auto _ : state) {
        const bool gone = bench.operations.Delete(bench.First(1000));
        state.PauseTiming();
        FinishSaves();
        if (!gone || bench.operations.TakeBackDeletion().size() != 1000) state.SkipWithError("not deleted");
        FinishSaves();
        state.ResumeTiming();
    }
}
BENCHMARK(DeleteThousandRows)->Apply(Sizes);

void TakeBackThousandRows(benchmark::State& state) {
    BenchOfDay bench(state.range(0));
    Options().KeepDeleted = true;
    for (auto _ : state) {
        state.PauseTiming();
        bench.operations.Delete(bench.First(1000));
        FinishSaves();
        state.ResumeTiming();
        if (bench.operations.TakeBackDeletion().size() != 1000) state.SkipWithError("not taken back");
        state.PauseTiming();
        FinishSaves();
        state.ResumeTiming();
    }
}
BENCHMARK(TakeBackThousandRows)->Apply(Sizes);

// A name in the middle of a sorted folder becomes another one.
void RenameInSortedFolder(benchmark::State& state) {
    NodeCollection nodes;
    Node& folder = nodes.Add(nullptr, NodeRelation::Last, L"Ordner", {});
    for (std::int64_t i = 0; i < state.range(0); ++i)
        nodes.Add(&folder, NodeRelation::Child, std::to_wstring(1'000'000 + i), {});
    folder.SetSorted(true);
    Node& clip = *nodes.Item(nodes.Count() / 2);
    bool front = false;
    for (auto _ : state)
        clip.SetText((front = !front) ? L"0" : L"9");
}
BENCHMARK(RenameInSortedFolder)->Apply(Sizes);

// A clip is taken into the middle of a sorted folder, and goes again.
void CaptureIntoSortedFolder(benchmark::State& state) {
    NodeCollection nodes;
    Node& folder = nodes.Add(nullptr, NodeRelation::Last, L"Ordner", {});
    for (std::int64_t i = 0; i < state.range(0); ++i)
        nodes.Add(&folder, NodeRelation::Child, std::to_wstring(1'000'000 + i), {});
    folder.SetSorted(true);
    const std::wstring middle = std::to_wstring(1'000'000 + state.range(0) / 2);
    for (auto _ : state)
        nodes.Remove(nodes.Add(&folder, NodeRelation::Child, middle, L"Clip"));
}
BENCHMARK(CaptureIntoSortedFolder)->Apply(Sizes);

// Many roots, as a damaged file has them.
void RemoveManyRoots(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        NodeCollection nodes;
        std::vector<Node*> roots;
        for (std::int64_t i = 0; i < state.range(0); ++i)
            roots.push_back(&nodes.Add(nullptr, NodeRelation::Last, L"x", {}));
        state.ResumeTiming();
        nodes.RemoveAll(roots);
    }
}
BENCHMARK(RemoveManyRoots)->Apply(Sizes)->Iterations(10);

// What the preview reads of a text of a megabyte before it shows something.
void BeginText(benchmark::State& state) {
    FakePlatform platform;
    CFormat format;
    format.DataSize = 1 << 20;
    platform.files.SetBytes(L"C:\\C1.nxc", std::string(static_cast<std::size_t>(format.DataSize), 'x'));
    for (auto _ : state)
        benchmark::DoNotOptimize(PreviewTextReader(L"C:\\C1.nxc", format).Next(kFirstPreviewBytes));
}
BENCHMARK(BeginText)->Unit(benchmark::kMillisecond);

}  // namespace
