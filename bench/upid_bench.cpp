// Node buffers in and out of trees and arrays, per node; "floor" is the same work by hand.

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "workload.h"

namespace {

using Records = std::vector<UPID_TREE_NODE_S>;

constexpr std::size_t kSize = sizeof(UPID_TREE_NODE_S);

void sizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->RangeMultiplier(10)->Range(1000, 1000000)->Unit(benchmark::kMicrosecond);
}

// Nodes 1 to `count`; each of the first tenth has ten children, a chain of every (count / 10)th.
Records records(std::int64_t size) {
  const auto count = static_cast<unsigned int>(size);
  Records nodes(count);
  for (unsigned int upid = 1; upid <= count; ++upid) {
    UPID_TREE_NODE_S& node = nodes[upid - 1];
    node.upid = upid;
    node.firstChild = upid <= count / 10 ? upid : 0;
    node.numOfChildren = upid <= count / 10 ? 10 : 0;
    node.sibling = upid + count / 10 <= count ? upid + count / 10 : 0;
    std::snprintf(node.name, sizeof node.name, "protocol %u", upid);
  }
  return nodes;
}

Records shuffled(Records nodes) {
  std::shuffle(nodes.begin(), nodes.end(), workload::Random(1));
  return nodes;
}

std::string nodeBuffer(const Records& nodes) {
  return {reinterpret_cast<const char*>(nodes.data()), nodes.size() * kSize};
}

std::string treeBuffer(const Records& nodes) {
  const unsigned int header[9] = {static_cast<unsigned int>(nodes.size()), 6, 17};
  return std::string(reinterpret_cast<const char*>(header), sizeof header) + nodeBuffer(nodes);
}

OrvaneUpidTree tree(std::int64_t size) {
  OrvaneUpidTree nodes;
  nodes.setBufferChecked(treeBuffer(records(size)));
  return nodes;
}

void readTree(benchmark::State& state, const Records& nodes) {
  const std::string buffer = treeBuffer(nodes);
  for (auto _ : state) {
    OrvaneUpidTree held;
    held.setBufferChecked(buffer);
    benchmark::DoNotOptimize(held.size());
  }
  workload::count(state);
}

void readTreeFloor(benchmark::State& state, const Records& nodes) {
  for (auto _ : state) {
    std::map<unsigned int, UPID_TREE_NODE_S> held;
    for (const UPID_TREE_NODE_S& node : nodes) held.emplace_hint(held.end(), node.upid, node);
    benchmark::DoNotOptimize(held.size());
  }
  workload::count(state);
}

void readTreeAscending(benchmark::State& state) { readTree(state, records(state.range(0))); }
BENCHMARK(readTreeAscending)->Apply(sizes);

void readTreeAscendingFloor(benchmark::State& state) {
  readTreeFloor(state, records(state.range(0)));
}
BENCHMARK(readTreeAscendingFloor)->Apply(sizes);

void readTreeShuffled(benchmark::State& state) {
  readTree(state, shuffled(records(state.range(0))));
}
BENCHMARK(readTreeShuffled)->Apply(sizes);

void readTreeShuffledFloor(benchmark::State& state) {
  readTreeFloor(state, shuffled(records(state.range(0))));
}
BENCHMARK(readTreeShuffledFloor)->Apply(sizes);

void writeTree(benchmark::State& state) {
  const OrvaneUpidTree held = tree(state.range(0));
  std::string buffer(held.size() * kSize, '\0');
  for (auto _ : state) benchmark::DoNotOptimize(held.getBufferChecked(buffer));
  workload::count(state);
}
BENCHMARK(writeTree)->Apply(sizes);

void writeTreeFloor(benchmark::State& state) {
  const OrvaneUpidTree held = tree(state.range(0));
  std::string buffer(held.size() * kSize, '\0');
  for (auto _ : state) {
    char* next = buffer.data();
    for (const auto& [upid, node] : held) {
      std::memcpy(next, static_cast<const UPID_TREE_NODE_S*>(&node), kSize);
      next += kSize;
    }
    benchmark::DoNotOptimize(next);
  }
  workload::count(state);
}
BENCHMARK(writeTreeFloor)->Apply(sizes);

// The children of every node that has some: each node of the tree once.
void writeChildren(benchmark::State& state) {
  const OrvaneUpidTree held = tree(state.range(0));
  char buffer[10 * kSize];
  for (auto _ : state) {
    for (unsigned int upid = 1; upid <= held.size() / 10; ++upid) {
      benchmark::DoNotOptimize(held.getChildrenBufferChecked(upid, buffer));
    }
  }
  workload::count(state);
}
BENCHMARK(writeChildren)->Apply(sizes);

void writeChildrenFloor(benchmark::State& state) {
  const OrvaneUpidTree held = tree(state.range(0));
  char buffer[10 * kSize];
  for (auto _ : state) {
    for (unsigned int upid = 1; upid <= held.size() / 10; ++upid) {
      char* next = buffer;
      for (auto child = held.find(held[upid].firstChild); child != held.end();
           child = held.find(child->second.sibling)) {
        std::memcpy(next, static_cast<const UPID_TREE_NODE_S*>(&child->second), kSize);
        next += kSize;
      }
      benchmark::DoNotOptimize(next);
    }
  }
  workload::count(state);
}
BENCHMARK(writeChildrenFloor)->Apply(sizes);

void readArray(benchmark::State& state) {
  const std::string buffer = nodeBuffer(records(state.range(0)));
  for (auto _ : state) {
    OrvaneUpidArray held;
    held.setBufferChecked(buffer);
    benchmark::DoNotOptimize(held.data());
  }
  workload::count(state);
}
BENCHMARK(readArray)->Apply(sizes);

void readArrayFloor(benchmark::State& state) {
  const Records nodes = records(state.range(0));
  for (auto _ : state) {
    std::vector<OrvaneUpidNode> held;
    held.reserve(nodes.size());
    for (const UPID_TREE_NODE_S& node : nodes) held.emplace_back(&node);
    benchmark::DoNotOptimize(held.data());
  }
  workload::count(state);
}
BENCHMARK(readArrayFloor)->Apply(sizes);

void writeArray(benchmark::State& state) {
  OrvaneUpidArray held;
  held.setBufferChecked(nodeBuffer(records(state.range(0))));
  std::string buffer(held.size() * kSize, '\0');
  for (auto _ : state) benchmark::DoNotOptimize(held.getBufferChecked(buffer));
  workload::count(state);
}
BENCHMARK(writeArray)->Apply(sizes);

void writeArrayFloor(benchmark::State& state) {
  const Records nodes = records(state.range(0));
  std::string buffer(nodes.size() * kSize, '\0');
  for (auto _ : state) {
    std::memcpy(buffer.data(), nodes.data(), buffer.size());
    benchmark::ClobberMemory();
  }
  workload::count(state);
}
BENCHMARK(writeArrayFloor)->Apply(sizes);

}  // namespace
