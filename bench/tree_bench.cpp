// The tree of one profile, flattened, saved, loaded and walked. The files are the fakes' and cost next to
// nothing, so that the figures are the program's own work.

#include <benchmark/benchmark.h>

#include <string>

#include "engine/tree/CTreeViewEx.h"
#include "engine/tree/TestTree.h"
#include "engine/tree/TreeFile.h"
#include "fake/FakePlatform.h"

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

void SaveProfile(benchmark::State& state) {
    Bench bench(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(bench.tree.BuildTreeData(bench.profile) && bench.tree.SaveDataToFile(kFile));
}
BENCHMARK(SaveProfile)->Apply(Sizes);

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

void DecodeFile(benchmark::State& state) {
    Bench bench(state.range(0));
    bench.tree.BuildTreeData(bench.profile);
    const auto image = EncodeTreeData(bench.tree.Data());
    for (auto _ : state)
        benchmark::DoNotOptimize(DecodeTreeData(image));
}
BENCHMARK(DecodeFile)->Apply(Sizes);

}  // namespace
