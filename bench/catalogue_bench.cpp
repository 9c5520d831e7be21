// Operations of the catalogue, per entry. Those on a list of UPIDs are given as many UPIDs as there
// are entries and applications, half of them unknown. They are in the order of the entries, so that
// the fitted growth is that of the operations and not that of memory visited at random.

#include <numeric>
#include <string>
#include <vector>

#include "workload.h"

namespace {

// Two ports and a range, which is short because some operations write out all of its numbers.
std::string portList(workload::Random& random) {
  const unsigned int start = workload::pick(random, 1, 60000);
  return std::to_string(workload::pick(random, 1, 65535)) + "," +
         std::to_string(workload::pick(random, 1, 65535)) + "," + std::to_string(start) + "-" +
         std::to_string(start + workload::pick(random, 1, 20));
}

OrvaneAppInfoArray entries(unsigned int count) {
  workload::Random random(count);
  OrvaneAppInfoArray catalogue;
  for (unsigned int upid = 1; upid <= count; ++upid) {
    OrvaneAppInfo entry;
    entry.setUPID(upid);
    entry.setPorts(portList(random).c_str());
    entry.setFQN(("application " + std::to_string(upid)).c_str());
    catalogue.add(entry);
  }
  return catalogue;
}

struct Input {
  OrvaneAppInfoArray catalogue;
  OrvaneAppMapping mapping;
  std::vector<unsigned int> upids;
};

Input makeInput(unsigned int count) {
  Input input = {entries(count), {}, std::vector<unsigned int>(count)};
  workload::Random random(count);
  OrvaneApplication application;
  for (unsigned int upid = 1; upid <= count; ++upid) {
    OrvanePortMapping item;
    item.setPorts(portList(random));
    application.setUpid(upid);
    application.getItems() = {item};
    input.mapping.addEx(application);
  }
  std::iota(input.upids.begin(), input.upids.end(), count / 2);
  return input;
}

template <typename Operation>
void run(benchmark::State& state, Operation operation) {
  const Input input = makeInput(static_cast<unsigned int>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(operation(input));
  workload::count(state);
}

void readCatalogue(benchmark::State& state) {
  const std::string text = entries(static_cast<unsigned int>(state.range(0))).getSection(true);
  for (auto _ : state) {
    OrvaneAppInfoArray catalogue;
    catalogue.setSection(text.c_str());
    benchmark::DoNotOptimize(catalogue.size());
  }
  workload::count(state);
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(readCatalogue)->Apply(workload::sizes);

void writeCatalogue(benchmark::State& state) {
  run(state, [](const Input& input) { return input.catalogue.getSection(true); });
}
BENCHMARK(writeCatalogue)->Apply(workload::sizes);

void writeByUpid(benchmark::State& state) {
  run(state, [](const Input& input) { return input.catalogue.getSection(input.upids, true); });
}
BENCHMARK(writeByUpid)->Apply(workload::sizes);

template <auto kOperation>
void selectUpids(benchmark::State& state) {
  std::vector<unsigned int> result;
  run(state, [&](const Input& input) {
    (input.catalogue.*kOperation)(input.upids, result);
    return result.size();
  });
}
BENCHMARK(selectUpids<&OrvaneAppInfoArray::getUnknownPortList>)->Apply(workload::sizes);
BENCHMARK(selectUpids<&OrvaneAppInfoArray::getCommonPortList>)->Apply(workload::sizes);

void appMappingSection(benchmark::State& state) {
  run(state, [](const Input& input) {
    OrvaneAppInfoArray catalogue;  // which grows
    return catalogue.getAppMappingSection(input.mapping, input.upids, true);
  });
}
BENCHMARK(appMappingSection)->Apply(workload::sizes);

void mergedAppMappingSection(benchmark::State& state) {
  run(state, [](const Input& input) {
    return input.catalogue.getMergedAppMappingSection(input.mapping, input.upids, true);
  });
}
BENCHMARK(mergedAppMappingSection)->Apply(workload::sizes);

void listPorts(benchmark::State& state) {
  std::vector<unsigned short> ports;
  run(state, [&](const Input& input) {
    input.catalogue.getPortList(ports);
    return ports.size();
  });
  state.counters["numbers"] = static_cast<double>(ports.size());
}
BENCHMARK(listPorts)->Apply(workload::sizes);

void writePorts(benchmark::State& state) {
  run(state, [](const Input& input) { return input.catalogue.getPorts(); });
}
BENCHMARK(writePorts)->Apply(workload::sizes);

}  // namespace
