// The runtime seam against real managed objects: results of every kind,
// overloads, statics, properties, lists and exceptions.
#include "bridge_test_util.h"

#include <cadtools/bridge/dotnet_utils.h>
#include <cadtools/compat/exceptions.h>

#include <cstdint>
#include <vector>

namespace cadtools::bridge::testing {
namespace {

using Seam = RuntimeTest;

TEST_F(Seam, ResultsOfEveryKind) {
  Object v = rt().Create(W("BridgeProbe.Values"));
  EXPECT_EQ(v.Call(W("Int")).AsInt(), -42);
  EXPECT_EQ(v.Call(W("Big")).AsInt(), std::int64_t{1} << 40);
  EXPECT_TRUE(v.Call(W("True")).AsBool());
  EXPECT_EQ(v.Call(W("Half")).AsDouble(), 0.5);
  EXPECT_EQ(v.Call(W("Auto")).AsEnum().value, 7);
  EXPECT_EQ(rt().TypeName(v.Call(W("Auto")).AsEnum().type), CString(W("BridgeProbe.Mode")));
  EXPECT_TRUE(v.Call(W("Null")).IsNull());
  EXPECT_EQ(v.Call(W("Boxed")).AsInt(), 7);
  const Object d = v.Call(W("Object")).AsObject();
  EXPECT_EQ(d.TypeName(), CString(W("BridgeProbe.Derived")));
  EXPECT_EQ(d.Call(W("Who")).AsString(), CString(W("Derived")));
  // A value of another kind than asked for is the framework's invalid argument.
  try {
    v.Call(W("Int")).AsString();
    ADD_FAILURE() << "no exception";
  } catch (CException* e) {
    EXPECT_NE(dynamic_cast<CInvalidArgException*>(e), nullptr);
    e->Delete();
  }
}

TEST_F(Seam, OverloadsArePickedAsCSharpPicksThem) {
  const Object o = rt().Create(W("BridgeProbe.Overloads"));
  const Object base = rt().Create(W("BridgeProbe.Base"));
  const Object derived = rt().Create(W("BridgeProbe.Derived"));
  const Object list = rt().Create(W("System.Collections.Generic.List`1[[System.String]]"));
  struct Row {
    std::vector<Arg> args;
    const WCHAR* picked;
  };
  const Row rows[] = {
      {{1}, W("int 1")},
      {{std::int64_t{1} << 40}, W("long 1099511627776")},
      {{2.5}, W("double 2.5")},
      {{true}, W("bool True")},
      {{W("x")}, W("string x")},
      {{EnumValue{1}}, W("Mode On")},
      {{base}, W("Base Base")},
      {{derived}, W("Derived Derived")},
      {{list}, W("object List`1")},
      {{1, W("s")}, W("int,string")},
      {{W("s"), 1}, W("string,int")},
      {{true, true}, W("object,object")},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(o.Call(W("Pick"), row.args).AsString(), CString(row.picked));
  }
  EXPECT_EQ(o.Call(W("Long"), {5}).AsString(), CString(W("long 5")));    // int widens to long
  EXPECT_EQ(o.Call(W("Narrow"), {5}).AsString(), CString(W("short 5")));  // and narrows where it fits
  EXPECT_EQ(ManagedFailure([&] { o.Call(W("Narrow"), {70000}); }).first, CString(W("System.OverflowException")));
  // null fits string, Base and Derived alike; neither Either is closer.
  EXPECT_EQ(ManagedFailure([&] { o.Call(W("Pick"), {nullptr}); }).first,
            CString(W("System.Reflection.AmbiguousMatchException")));
  EXPECT_EQ(ManagedFailure([&] { o.Call(W("Either"), {derived, derived}); }).first,
            CString(W("System.Reflection.AmbiguousMatchException")));
  EXPECT_EQ(ManagedFailure([&] { o.Call(W("Pick"), {1, 2, 3}); }),
            std::make_pair(CString(W("System.MissingMemberException")),
                           CString(W("method BridgeProbe.Overloads.Pick(int, int, int) not found"))));
}

TEST_F(Seam, ConstructorsStaticsAndProperties) {
  EXPECT_EQ(rt().Create(W("BridgeProbe.Overloads")).Get(W("Made")).AsString(), CString(W("()")));
  EXPECT_EQ(rt().Create(W("BridgeProbe.Overloads"), {5}).Get(W("Made")).AsString(), CString(W("(int)")));
  EXPECT_EQ(rt().Create(W("BridgeProbe.Overloads"), {W("s")}).Get(W("Made")).AsString(), CString(W("(string)")));
  EXPECT_EQ(rt().CallStatic(W("BridgeProbe.Overloads"), W("Static"), {3}).AsString(), CString(W("static int 3")));
  rt().SetStatic(W("BridgeProbe.Overloads"), W("Counter"), 5);
  EXPECT_EQ(rt().GetStatic(W("BridgeProbe.Overloads"), W("Counter")).AsInt(), 5);

  const Object o = rt().Create(W("BridgeProbe.Overloads"));
  EXPECT_TRUE(o.Get(W("Name")).IsNull());
  o.Set(W("Name"), W("Rail"));
  EXPECT_EQ(o.Get(W("Name")).AsString(), CString(W("Rail")));
  EXPECT_EQ(o.Get(W("Item"), {W("k")}).AsInt(), -1);  // an indexer
  o.SetIndexed(W("Item"), {W("k"), 9});
  EXPECT_EQ(o.Get(W("Item"), {W("k")}).AsInt(), 9);

  // Resolved once, then called without a lookup.
  const Method stat = rt().ResolveStatic(W("BridgeProbe.Overloads"), W("Static"), {W("")});
  EXPECT_EQ(stat.Invoke({W("x")}).AsString(), CString(W("static string x")));
  const Method make = rt().ResolveConstructor(W("BridgeProbe.Overloads"), {0});
  EXPECT_EQ(make.Invoke({1}).AsObject().Get(W("Made")).AsString(), CString(W("(int)")));
  // Arguments that do not fit the member chosen are refused, not misread.
  EXPECT_EQ(ManagedFailure([&] { stat.Invoke({1}); }).first, CString(W("System.InvalidCastException")));
  EXPECT_EQ(ManagedFailure([&] { stat.Invoke(Args{}); }).first,
            CString(W("System.Reflection.TargetParameterCountException")));
}

TEST_F(Seam, ListsAreWalked) {
  const Object v = rt().Create(W("BridgeProbe.Values"));
  const std::vector<Value> strings = v.Call(W("Strings")).AsObject().Items();
  ASSERT_EQ(strings.size(), 3U);
  EXPECT_EQ(strings[1].AsString(), CString(W("\u00E4")));
  EXPECT_EQ(strings[2].AsString(), CString(W("\U0001F600")));

  const std::vector<Value> mixed = v.Call(W("Mixed")).AsObject().Items();
  ASSERT_EQ(mixed.size(), 6U);
  EXPECT_EQ(mixed[0].AsInt(), 1);
  EXPECT_EQ(mixed[1].AsString(), CString(W("two")));
  EXPECT_TRUE(mixed[2].IsNull());
  EXPECT_TRUE(mixed[3].AsBool());
  EXPECT_EQ(mixed[4].AsEnum().value, 1);
  EXPECT_EQ(mixed[5].AsObject().TypeName(), CString(W("BridgeProbe.Base")));

  const std::vector<Value> numbers = v.Call(W("Numbers")).AsObject().Items();
  ASSERT_EQ(numbers.size(), 3U);
  EXPECT_EQ(numbers[0].AsInt() * 100 + numbers[1].AsInt() * 10 + numbers[2].AsInt(), 312);
}

TEST_F(Seam, StringsCrossUnitForUnit) {
  const Object v = rt().Create(W("BridgeProbe.Values"));
  // A Value keeps every unit, NULs and lone surrogates included.
  EXPECT_EQ(v.Call(W("WithNul")).AsString().GetLength(), 5);
  EXPECT_EQ(v.Call(W("LoneSurrogate")).AsString(), CString(W("x\xD800y")));
  const WCHAR with_nul[] = {'a', 0, 'b'};
  EXPECT_EQ(v.Call(W("Length"), {WStringView(with_nul, 3)}).AsInt(), 3);  // a view: all of it
  EXPECT_EQ(v.Call(W("Length"), {static_cast<const WCHAR*>(with_nul)}).AsInt(), 1);  // a C string: up to NUL
  EXPECT_EQ(v.Call(W("Length"), {static_cast<const WCHAR*>(nullptr)}).AsInt(), -1);  // null
  EXPECT_EQ(v.Call(W("Units"), {W("\u00C4\u4E2D\U0001F600")}).AsString(), CString(W("00C4 4E2D D83D DE00")));
}

TEST_F(Seam, ManagedExceptionsArriveWithTypeAndMessage) {
  const Object t = rt().Create(W("BridgeProbe.Thrower"));
  using Failure = std::pair<CString, CString>;
  EXPECT_EQ(ManagedFailure([&] { t.Call(W("Throw"), {W("System.IO.IOException"), W("disk \u00FC")}); }),
            Failure(W("System.IO.IOException"), W("disk \u00FC")));
  EXPECT_EQ(ManagedFailure([&] { t.Call(W("NullDeref")); }).first, CString(W("System.NullReferenceException")));
  EXPECT_EQ(ManagedFailure([&] { t.Get(W("Count")); }), Failure(W("System.InvalidOperationException"), W("no count")));
  EXPECT_EQ(ManagedFailure([&] { Object().Call(W("ToString")); }).first, CString(W("System.NullReferenceException")));
  EXPECT_EQ(ManagedFailure([&] { rt().Create(W("No.Such.Type")); }).first, CString(W("System.TypeLoadException")));
  EXPECT_EQ(ManagedFailure([&] { rt().LoadAssembly(W("/no/such/file.dll")); }).first,
            CString(W("System.IO.FileNotFoundException")));
  // The host catches them as it catches the framework's.
  try {
    t.Call(W("Throw"), {W("System.ArgumentException"), W("bad")});
  } catch (CException* e) {
    WCHAR text[64];
    EXPECT_TRUE(e->GetErrorMessage(text, 64));
    EXPECT_EQ(CString(text), CString(W("System.ArgumentException: bad")));
    e->Delete();
  }
}

}  // namespace
}  // namespace cadtools::bridge::testing
