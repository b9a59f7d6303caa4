// CDotNetUtils over real managed strings, and gcroot's handle rules.
#include "bridge_test_util.h"

#include <cadtools/bridge/dotnet_utils.h>
#include <cadtools/bridge/gcroot.h>

#include <cstring>
#include <thread>
#include <vector>

namespace cadtools::bridge::testing {
namespace {

using Strings = RuntimeTest;

// The units of a managed string, as the probe lists them.
CString UnitsOf(const Ref<System::String>& s) {
  return Runtime::Get().Create(W("BridgeProbe.Values")).Call(W("Units"), {s}).AsString();
}

TEST_F(Strings, RoundTripsKeepEveryUnit) {
  const WCHAR lone[] = {'x', 0xDC00, 0};
  const CString rows[] = {W(""), W("Klemme X1"), W("\u00C4rger \u00FCber \u00DF"), W("\u4E2D\u6587\u30C6\u30B9\u30C8"),
                          W("\U0001F600 \U00020000"), CString(lone)};
  for (const CString& text : rows) {
    const Ref<System::String> managed = CDotNetUtils::CString2DotNetString(text);
    ASSERT_FALSE(managed.IsNull());  // "" gives an empty string, not null
    EXPECT_EQ(CDotNetUtils::DotNetString2CString(managed), text);
  }
  EXPECT_EQ(UnitsOf(CDotNetUtils::CString2DotNetString(W("\U0001F600"))), CString(W("D83D DE00")));
  EXPECT_EQ(CDotNetUtils::DotNetString2CString(nullptr), CString());
}

TEST_F(Strings, BothDirectionsStopAtTheFirstNul) {
  const WCHAR units[] = {'a', 'b', 0, 'c', 'd'};
  const Ref<System::String> cut = CDotNetUtils::CString2DotNetString(CString(units, 5));
  EXPECT_EQ(UnitsOf(cut), CString(W("0061 0062")));
  const Ref<System::String> whole(rt().Create(W("BridgeProbe.Values")).CallForObject(W("WithNul")));
  EXPECT_EQ(CDotNetUtils::DotNetString2CString(whole), CString(W("ab")));
}

// A weak reference to a fresh object held by nothing but root; made on a
// thread of its own so that no stack frame of this one points at it.
Object WatchFreshObject(gcroot<System::Object>& root) {
  Object weak;
  std::thread([&] {
    Runtime& rt = Runtime::Get();
    const Object fresh = rt.CallStatic(W("BridgeProbe.Lifetime"), W("Fresh")).AsObject();
    root = Ref<System::Object>(fresh);
    weak = rt.CallStatic(W("BridgeProbe.Lifetime"), W("Watch"), {fresh}).AsObject();
  }).join();
  return weak;
}

bool IsAlive(const Object& weak) {
  // A dead frame of this thread may still hold the object's address; the
  // collector scans stacks conservatively.
  volatile char scrub[64 * 1024];
  std::memset(const_cast<char*>(scrub), 0, sizeof scrub);
  Runtime::Get().Collect();
  return Runtime::Get().CallStatic(W("BridgeProbe.Lifetime"), W("IsAlive"), {weak}).AsBool();
}

TEST_F(Strings, GcrootHandleRules) {
  Object weak;
  {
    gcroot<System::Object> root;  // a handle at once, with no target
    const std::intptr_t handle = root.Handle();
    EXPECT_NE(handle, 0);
    EXPECT_TRUE(static_cast<Ref<System::Object>>(root).IsNull());
    weak = WatchFreshObject(root);
    EXPECT_EQ(root.Handle(), handle);  // assignment retargets, never reallocates
    EXPECT_TRUE(IsAlive(weak)) << "an object held only by a gcroot survives a collection";
    EXPECT_EQ(root->TypeName(), CString(W("BridgeProbe.Base")));
    gcroot<System::Object> copy(root);  // a handle of its own, same target
    EXPECT_NE(copy.Handle(), handle);
    copy = Ref<System::Object>(nullptr);
    EXPECT_TRUE(IsAlive(weak));
  }
  EXPECT_FALSE(IsAlive(weak)) << "once the gcroot is gone, the object is collected";
  { gcroot<System::String> unused; }  // constructed and destroyed without assignment
}

TEST_F(Strings, ObjectsAreLetGoWhenTheLastCopyGoes) {
  // More than the bridge queues before it frees at once.
  std::vector<Object> weak;
  {
    std::vector<Object> held;
    for (int i = 0; i < 300; ++i) {
      held.push_back(rt().CallStatic(W("BridgeProbe.Lifetime"), W("Fresh")).AsObject());
      weak.push_back(rt().CallStatic(W("BridgeProbe.Lifetime"), W("Watch"), {held.back()}).AsObject());
    }
    const Object copy = held.front();
    held.clear();
    EXPECT_TRUE(IsAlive(weak.front())) << "a copy keeps its object";
    EXPECT_FALSE(IsAlive(weak.back()));
  }
  int alive = 0;
  for (const Object& w : weak) alive += IsAlive(w) ? 1 : 0;
  EXPECT_EQ(alive, 0);
}

}  // namespace
}  // namespace cadtools::bridge::testing
