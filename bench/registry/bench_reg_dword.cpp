// CRegDWORD beside the peer of peer.h doing the same work: a read (a value
// object with force set converts by reading again), a write-through (an
// assignment of a new value) and the whole life of a value object (its
// construction reads, its destruction writes). The rows are timed by the
// wall clock: the write's system calls, and under wine the registry server,
// run outside this thread's CPU time.
#include "common/subjects.h"
#include "registry/peer.h"
#include "registry/scratch_store.h"

#include <cadtools/registry/reg_base.h>
#include <cadtools/registry/reg_values.h>

#include <benchmark/benchmark.h>

namespace bench {
namespace {

// The value the rows work on: key path and name as the typed value
// composes them from the root and its key string.
const WCHAR kValueKey[] = CADTOOLS_WIDE("Settings\\Bench\\Count");
const WCHAR kValueName[] = CADTOOLS_WIDE("Count");
const std::basic_string<WCHAR>& PeerPath() {
  static const std::basic_string<WCHAR> path = [] {
    std::basic_string<WCHAR> p = BenchRootText();
    return p + CADTOOLS_WIDE("Settings\\Bench");
  }();
  return path;
}

constexpr DWORD kDefault = 7;

void Prepare() {
  UseScratchStore();
  CRegBase::SetRegBase(BenchRootText());
  CRegDWORD(kValueKey, kDefault) = kDefault + 1;  // the value and its key exist
  peer::Write(PeerPath().c_str(), kValueName, kDefault + 1);
}

void OursRead(benchmark::State& state) {
  Prepare();
  CRegDWORD value(kValueKey, kDefault, /*force=*/1);
  for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(static_cast<DWORD>(value));
}

void PeerRead(benchmark::State& state) {
  Prepare();
  for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(peer::Read(PeerPath().c_str(), kValueName, kDefault));
}

void OursWrite(benchmark::State& state) {
  Prepare();
  CRegDWORD value(kValueKey, kDefault);
  DWORD next = 0;
  for ([[maybe_unused]] auto _ : state) value = ++next;
}

void PeerWrite(benchmark::State& state) {
  Prepare();
  DWORD next = 0;
  for ([[maybe_unused]] auto _ : state) peer::Write(PeerPath().c_str(), kValueName, ++next);
}

void OursLifetime(benchmark::State& state) {
  Prepare();
  for ([[maybe_unused]] auto _ : state) {
    CRegDWORD value(kValueKey, kDefault);
    benchmark::DoNotOptimize(static_cast<DWORD>(value));
  }
}

void PeerLifetime(benchmark::State& state) {
  Prepare();
  for ([[maybe_unused]] auto _ : state) {
    const DWORD value = peer::Read(PeerPath().c_str(), kValueName, kDefault);
    peer::Write(PeerPath().c_str(), kValueName, value);
  }
}

}  // namespace

void RegisterRegistryPairs(PairRegistry& registry) {
  const peer::Names peers = peer::RowNames();
  registry.Add("CRegDWORD read", "CRegDWORD_Read", OursRead, peers.read, PeerRead, Clock::kWall);
  registry.Add("CRegDWORD write-through", "CRegDWORD_Write", OursWrite, peers.write, PeerWrite, Clock::kWall);
  registry.Add("CRegDWORD construct+destroy", "CRegDWORD_Lifetime", OursLifetime, peers.both, PeerLifetime,
               Clock::kWall);
}

}  // namespace bench
