// Operations on whole collections, per application.

#include "workload.h"

namespace {

unsigned int sizeOf(const benchmark::State& state) {
  return static_cast<unsigned int>(state.range(0));
}

void readMapping(benchmark::State& state) {
  const std::string text = workload::applications(sizeOf(state)).getSection(true);
  for (auto _ : state) {
    OrvaneAppMapping mapping;
    mapping.setSection(text.c_str());
    benchmark::DoNotOptimize(mapping.size());
  }
  workload::count(state);
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(readMapping)->Apply(workload::sizes);

void writeMapping(benchmark::State& state) {
  const OrvaneAppMapping mapping = workload::applications(sizeOf(state));
  for (auto _ : state) benchmark::DoNotOptimize(mapping.getSection(true));
  workload::count(state);
}
BENCHMARK(writeMapping)->Apply(workload::sizes);

template <int kStep>
void updatedSection(benchmark::State& state) {
  const OrvaneAppMapping older = workload::applications(sizeOf(state));
  const OrvaneAppMapping newer = workload::changed(older, kStep);
  for (auto _ : state) benchmark::DoNotOptimize(older.getUpdatedSection(newer, true));
  workload::count(state);
}
BENCHMARK(updatedSection<20>)->Apply(workload::sizes);
BENCHMARK(updatedSection<1>)->Apply(workload::sizes);

void removeNew(benchmark::State& state) {
  const OrvaneAppMapping held = workload::applications(sizeOf(state));
  OrvaneAppMapping pending = held;
  for (OrvaneApplication& application : pending) application.setUpid(kOrvaneNoUpid);
  for (auto _ : state) {
    state.PauseTiming();
    {
      OrvaneAppMapping target = held;
      OrvaneAppMapping source = pending;
      state.ResumeTiming();
      target.removeNew(source);
      state.PauseTiming();
    }
    state.ResumeTiming();
  }
  workload::count(state);
}
BENCHMARK(removeNew)->Apply(workload::sizes);

void updateNew(benchmark::State& state) {
  const OrvaneAppMapping known = workload::applications(sizeOf(state));
  OrvaneAppMapping pending = known;
  for (auto _ : state) known.updateNew(pending);
  workload::count(state);
}
BENCHMARK(updateNew)->Apply(workload::sizes);

void sortByName(benchmark::State& state) {
  const OrvaneAppMapping mapping = workload::applications(sizeOf(state));
  for (auto _ : state) {
    state.PauseTiming();
    {
      OrvaneAppMapping sorted = mapping;
      state.ResumeTiming();
      sorted.sortByName();
      state.PauseTiming();
    }
    state.ResumeTiming();
  }
  workload::count(state);
}
BENCHMARK(sortByName)->Apply(workload::sizes);

}  // namespace
