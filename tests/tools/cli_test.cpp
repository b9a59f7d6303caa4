// The command line's pure parts: reading numbers and options, writing
// numbers, fitting a picture, and the exit status of whole command lines.
#include "args.h"
#include "cli.h"
#include "errors.h"
#include "format.h"
#include "geom.h"
#include "svg.h"
#include "view.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

namespace cadtools::cli {
namespace {

TEST(ParseNumber, ReadsDecimalsTheSameEverywhere) {
  const std::pair<const char*, double> cases[] = {
      {"0", 0.0}, {"-2.5", -2.5}, {"+3", 3.0}, {"1e-3", 0.001}, {".5", 0.5}, {"1e-310", 1e-310},
  };
  for (const auto& [text, value] : cases) EXPECT_EQ(ParseNumber(text), value) << text;
}

TEST(ParseNumber, RefusesWhatIsNotAFiniteNumber) {
  for (const char* text : {"", "x", "1.5x", "nan", "inf", "-inf", "1e999", "1e-400", "0x10", "+", "+-1", " 1", "1,5"}) {
    EXPECT_THROW(ParseNumber(text), UsageError) << "'" << text << "'";
  }
}

GeomArgs Parse(std::vector<std::string_view> words, unsigned accepted = kOptInclusive | kOptCoarse) {
  return ParseGeomArgs(words, accepted);
}

TEST(ParseGeomArgs, OptionsStandAnywhereInEitherForm) {
  const GeomArgs a = Parse({"1", "--coarse", "1", "-2", "--inclusive=1", "--svg=out.svg", "3"});
  EXPECT_EQ(a.numbers, (std::vector<double>{1, -2, 3}));
  EXPECT_EQ(a.coarse, 1);
  EXPECT_EQ(a.inclusive, 1);
  EXPECT_EQ(a.svg, "out.svg");

  const GeomArgs b = Parse({"--diagonals", "--", "-5"}, kOptDiagonals);
  EXPECT_TRUE(b.diagonals);
  EXPECT_EQ(b.numbers, std::vector<double>{-5});
}

TEST(ParseGeomArgs, RejectsBadOptions) {
  const std::vector<std::vector<std::string_view>> cases = {
      {"--frob"},         {"--coarse"},          {"--coarse", "2"}, {"--inclusive=yes"},
      {"--diagonals"},    {"--svg="},            {"1", "--svg"},   {"1", "--", "--coarse"},
  };
  for (const auto& words : cases) EXPECT_THROW(Parse(words), UsageError) << words.front();
  EXPECT_THROW(Parse({"--diagonals=1"}, kOptDiagonals), UsageError);
}

TEST(FormatNumber, ShortestTextThatReadsBack) {
  const std::pair<double, const char*> cases[] = {
      {0.0, "0"},           {-0.0, "0"},         {0.1, "0.1"},       {0.0005, "0.0005"},
      {5e-7, "5e-07"},      {1e15, "1e+15"},     {999999999999999.0, "999999999999999"},
      {-2.5, "-2.5"},       {1.0 / 3.0, "0.3333333333333333"},
      {std::numeric_limits<double>::quiet_NaN(), "nan"}, {-std::numeric_limits<double>::infinity(), "-inf"},
  };
  for (const auto& [value, text] : cases) EXPECT_EQ(FormatNumber(value), text);
  for (const double v : {0.1 + 0.2, 1e-5, 123456.789, 1e300, -4.9e-324}) {
    EXPECT_EQ(ParseNumber(FormatNumber(v)), v) << FormatNumber(v);
  }
}

TEST(FitView, PadsAndKeepsTheAspectWithYDownward) {
  const View v = FitView({0, 0, 10, 5}, 600, 600);
  EXPECT_DOUBLE_EQ(v.width, 600.0);
  EXPECT_LT(v.height, v.width);
  EXPECT_LT(v.model.min_x, 0.0);
  EXPECT_GT(v.model.max_y, 5.0);
  const WPt top = v.ToPixels({0, 0});
  const WPt bottom = v.ToPixels({0, 5});
  EXPECT_GT(top.x, 0.0);
  EXPECT_GT(bottom.y, top.y);
  EXPECT_LT(bottom.y, v.height);
}

TEST(FitView, GivesDegenerateContentARealBox) {
  for (const Bounds b : {Bounds{3, 3, 3, 3}, Bounds{0, 1, 10, 1}, Bounds{1e15, 0, 1e15, 1e-300}}) {
    const View v = FitView(b, 640, 480);
    EXPECT_TRUE(std::isfinite(v.scale) && v.scale > 0.0);
    EXPECT_GT(v.height, 50.0);
    EXPECT_GT(v.width, 50.0);
  }
}

TEST(ClipLine, CutsTheWholeLineAtTheBox) {
  const Bounds box{0, 0, 10, 10};
  const auto across = ClipLine({-5, 5}, {-4, 5}, box);
  ASSERT_TRUE(across);
  EXPECT_EQ(across->first, WPt(0, 5));
  EXPECT_EQ(across->second, WPt(10, 5));
  EXPECT_FALSE(ClipLine({-5, 11}, {-4, 11}, box));
  EXPECT_FALSE(ClipLine({1, 1}, {1, 1}, box));
}

TEST(ClipPolygon, KeepsTheSideOfTheGivenPoint) {
  const auto half = ClipPolygon(Corners({0, 0, 10, 10}), {0, 0}, {10, 10}, {10, 0});
  ASSERT_EQ(half.size(), 3U);
  for (const WPt& p : half) EXPECT_GE(p.x, p.y);
}

TEST(RenderSvg, RefusesCoordinatesItCannotDraw) {
  Scene scene;
  scene.shapes.emplace_back(Marker{{1e200, 0}, Role::kAnswer, ""});
  EXPECT_THROW(RenderSvg(scene), OutputError);
  Scene lines_only;
  lines_only.shapes.emplace_back(InfiniteLine{{0, 0}, {1, 1}, Role::kGuide});
  EXPECT_NE(RenderSvg(lines_only).find("</svg>"), std::string::npos);
}

// Every question in the table answers a plain example and draws it with
// every legend entry; the zone picture emphasises exactly the answered zone.
TEST(Questions, EachAnswersAndDraws) {
  const std::pair<std::string_view, std::vector<double>> examples[] = {
      {"intersect", {0, 0, 2, 0, 1, -1, 1, 1}}, {"circles", {0, 0, 5, 8, 0, 5}},
      {"onentity", {0, 0, 10, 0, 5, 1}},        {"distance", {5, 2, 0, 0, 10, 0}},
      {"angle", {0, 0, 1, -1}},                 {"zone", {0, 0, 10, 10, 5, 11}},
      {"rectdist", {5, 2, 0, 0, 10, 10}},       {"clip", {0, 0, 10, 10, -5, 5, -4, 5}},
      {"section", {0, 0, 2, 2, 1, 1, 3, 3}},    {"bezier", {0.5, 0, 0, 0, 10, 10, 10, 10, 0}},
  };
  ASSERT_EQ(std::size(examples), Questions().size());
  for (const auto& [name, numbers] : examples) {
    const Question* q = FindQuestion(name);
    ASSERT_NE(q, nullptr) << name;
    GeomArgs args;
    args.numbers = numbers;
    const Answer answer = q->answer(args);
    ASSERT_FALSE(answer.lines.empty()) << name;
    const std::string svg = RenderSvg(answer.scene);
    for (const LegendEntry& entry : answer.scene.legend) {
      std::string text = entry.text;  // as escaped in SVG: only '&' occurs
      for (std::size_t at = text.find('&'); at != std::string::npos; at = text.find('&', at + 1)) {
        text.insert(at + 1, "amp;");
      }
      EXPECT_NE(svg.find(">" + text + "<"), std::string::npos) << name << ": " << text;
    }
    if (name == "zone") {
      EXPECT_EQ(svg.find("#ffd84d"), svg.rfind("#ffd84d"));
      EXPECT_NE(svg.find("#ffd84d\" fill-opacity=\"0.75\" stroke=\"none\"/>\n<text x=\""), std::string::npos);
    }
  }
}

TEST(Zones, DiagonalsCutTheViewIntoFourShadedWedges) {
  Scene scene;
  scene.shapes.emplace_back(Zones{WRect(0, 0, 10, 6), true, WRect::Right});
  const std::string svg = RenderSvg(scene);
  for (const char* name : {">Top<", ">Right<", ">Bottom<", ">Left<"}) {
    EXPECT_EQ(svg.find(name), svg.rfind(name)) << name;
    EXPECT_NE(svg.find(name), std::string::npos) << name;
  }
  EXPECT_EQ(svg.find(">Inside<"), std::string::npos);
}

int RunWords(std::vector<std::string_view> words, std::string* err_text = nullptr, std::string input = {},
             std::string* out_text = nullptr) {
  std::istringstream in(std::move(input));
  std::ostringstream out;
  std::ostringstream err;
  const int status = Run(words, in, out, err);
  if (err_text != nullptr) *err_text = err.str();
  if (out_text != nullptr) *out_text = out.str();
  return status;
}

TEST(Run, TextCommandsOnStandardInput) {
  const struct {
    std::vector<std::string_view> words;
    std::string input;
    std::string want;
  } cases[] = {
      {{"natsort"}, "x10\r\nx9\nX9\n", "x9\nX9\nx10\n"},  // CRLF ends a line too; ties keep input order
      {{"natsort", "-u"}, "b\na\nA\n", "a\nb\n"},
      {{"natsort", "-r", "-"}, "a 2\na10\n", "a10\na 2\n"},  // white space is skipped
      {{"natsort"}, "", ""},
      {{"natsort"}, "\xC3\xA9\xFF\n\xC3\x89\n", "\xC3\x89\n\xC3\xA9\xFF\n"},  // bytes kept as given
      {{"like", "*"}, "a\n\nb", "a\n\nb\n"},
      {{"like", "m*"}, "Motor\nxm\n", "Motor\n"},
      {{"like", "\xC3\x89*"}, "\xC3\xA9t\xC3\xA9\nete\n", "\xC3\xA9t\xC3\xA9\n"},  // case beyond ASCII
      {{"nextname", "-n2", "--", "Az"}, "", "ba\nbb\n"},
      {{"units", "mm2inch", "-0.25"}, "", "-0.00984\n"},
  };
  for (const auto& c : cases) {
    std::string out;
    EXPECT_EQ(RunWords(c.words, nullptr, c.input, &out), kExitOk) << c.words.front();
    EXPECT_EQ(out, c.want) << c.words.front() << " on " << c.input;
  }
}

TEST(Run, BadCommandLinesExitTwoWithAMessage) {
  const std::vector<std::vector<std::string_view>> cases = {
      {},
      {"frob"},
      {"tour", "x"},
      {"geom"},
      {"geom", "intersect", "1"},
      {"geom", "bezier", "0.5", "0", "0", "1"},
      {"geom", "bezier", "1e-9", "0", "0", "1", "1", "2", "2", "3", "3"},
      {"geom", "circles", "0", "0", "-1", "1", "1", "1"},
      {"geom", "zone", "0", "0", "1", "1", "2", "2", "--coarse", "1"},
      {"natsort", "-x"},
      {"like"},
      {"nextname"},
      {"nextname", "a", "b"},
      {"nextname", "K1", "-n"},
      {"nextname", "K1", "-n", "1000001"},
      {"units", "mm2inch"},
      {"units", "mm2inch", "nan"},
  };
  for (const auto& words : cases) {
    std::string err;
    EXPECT_EQ(RunWords(words, &err), kExitUsage) << (words.empty() ? "(none)" : words.back());
    EXPECT_EQ(err.rfind("cadtools: ", 0), 0U) << err;
  }
}

TEST(Run, HelpAtEveryLevelExitsZero) {
  for (const auto& words : std::vector<std::vector<std::string_view>>{
           {"--help"}, {"geom", "--help"}, {"geom", "zone", "-h"}, {"geom", "clip", "1", "--help"},
           {"natsort", "--help"}, {"like", "-h"}, {"nextname", "--help"}, {"units", "-h"}}) {
    EXPECT_EQ(RunWords(words), kExitOk) << words.back();
  }
}

}  // namespace
}  // namespace cadtools::cli
