#include "text_commands.h"

#include "args.h"
#include "errors.h"
#include "format.h"
#include "help.h"
#include "like_filter.h"
#include "line_input.h"
#include "natural_sort.h"
#include "parallel.h"

#include <cadtools/compat/cstring.h>
#include <cadtools/math_tools.h>
#include <cadtools/text_tools.h>

#include <algorithm>
#include <charconv>
#include <map>
#include <ostream>
#include <string>
#include <vector>

namespace cadtools::cli {
namespace {

struct CommandWords {
  std::string flags;                        // the flag letters given, e.g. "ru"
  std::map<char, std::string_view> values;  // letters that take a value
  std::vector<std::string_view> operands;
  bool help = false;
};

// Whether a word such as "-K12" is an operand (a device tag, a pattern, a
// negative number) or an unknown option (where operands are file names).
enum class DashWords { kOperands, kOptions };

// Splits a command's words into options and operands. "-ru" gives r and u;
// "-n 5" and "-n5" give n the value 5; "--" ends the options; "-h" and
// "--help" ask for the usage; "-" alone is an operand (standard input).
// Other words that start with '-' are options when `dash` says so, and
// otherwise only when a letter of the command follows the '-'.
CommandWords SplitWords(std::span<const std::string_view> words, std::string_view flags,
                        std::string_view valued, DashWords dash, const std::string& usage) {
  CommandWords w;
  bool options = true;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::string_view word = words[i];
    if (options && (word == "--help" || word == "-h")) {
      w.help = true;
      return w;
    }
    if (options && word == "--") {
      options = false;
      continue;
    }
    const bool is_option = options && word.size() >= 2 && word[0] == '-' &&
                           (dash == DashWords::kOptions || flags.find(word[1]) != std::string_view::npos ||
                            valued.find(word[1]) != std::string_view::npos);
    if (!is_option) {
      w.operands.push_back(word);
      continue;
    }
    for (std::size_t k = 1; k < word.size(); ++k) {
      const char letter = word[k];
      if (valued.find(letter) != std::string_view::npos) {
        std::string_view value = word.substr(k + 1);
        if (value.empty()) {
          if (++i == words.size()) throw UsageError(std::string("option -") + letter + " needs a value", usage);
          value = words[i];
        }
        w.values[letter] = value;
        break;
      }
      if (flags.find(letter) == std::string_view::npos) {
        throw UsageError("unknown option '" + std::string(word) + "'", usage);
      }
      w.flags += letter;
    }
  }
  return w;
}

bool Has(const CommandWords& w, char flag) { return w.flags.find(flag) != std::string::npos; }

void WriteLine(std::ostream& out, std::string_view line) {
  out.write(line.data(), static_cast<std::streamsize>(line.size()));
  out.put('\n');
}

void WriteText(std::ostream& out, std::string_view text) {
  out.write(text.data(), static_cast<std::streamsize>(text.size()));
}

// The lines in the given order, each ended with "\n". Long lists are
// put together on several threads, a stretch each, and written in turn.
void WriteLines(std::ostream& out, std::span<const std::string_view> lines, std::span<const std::size_t> order,
                unsigned threads) {
  constexpr std::size_t kLinesPerThread = std::size_t{1} << 16;
  const auto parts = static_cast<unsigned>(std::clamp<std::size_t>(order.size() / kLinesPerThread, 1, threads));
  std::vector<std::string> texts(parts);
  RunParallel(parts, [&](unsigned part) {
    const std::span<const std::size_t> mine =
        order.subspan(order.size() * part / parts, order.size() * (part + 1) / parts - order.size() * part / parts);
    std::size_t size = 0;
    for (const std::size_t i : mine) size += lines[i].size() + 1;
    std::string& text = texts[part];
    text.reserve(size);
    for (const std::size_t i : mine) {
      text.append(lines[i]);
      text.push_back('\n');
    }
  });
  for (const std::string& text : texts) WriteText(out, text);
}

}  // namespace

void RunNatsort(std::span<const std::string_view> words, std::istream& in, std::ostream& out) {
  const CommandWords w = SplitWords(words, "ru", "", DashWords::kOptions, NatsortUsage());
  if (w.help) {
    out << NatsortUsage();
    return;
  }
  const std::string text = ReadText(w.operands, in);
  const std::vector<std::string_view> lines = SplitLines(text);
  const NaturalSortOptions options{.reverse = Has(w, 'r'), .unique = Has(w, 'u'), .threads = DefaultThreads()};
  WriteLines(out, lines, NaturalSortOrder(lines, options), options.threads);
}

void RunLike(std::span<const std::string_view> words, std::istream& in, std::ostream& out) {
  const CommandWords w = SplitWords(words, "", "", DashWords::kOperands, LikeUsage());
  if (w.help) {
    out << LikeUsage();
    return;
  }
  if (w.operands.empty()) throw UsageError("no pattern given", LikeUsage());
  const LikeFilter filter(w.operands.front());
  std::string matches;
  filter.Filter(ReadText(std::span(w.operands).subspan(1), in), matches);
  WriteText(out, matches);
}

void RunNextname(std::span<const std::string_view> words, std::ostream& out) {
  const CommandWords w = SplitWords(words, "", "n", DashWords::kOperands, NextnameUsage());
  if (w.help) {
    out << NextnameUsage();
    return;
  }
  if (w.operands.size() != 1) throw UsageError("expected one name", NextnameUsage());
  constexpr int kMaxCount = 1000000;
  int count = 1;
  if (const auto it = w.values.find('n'); it != w.values.end()) {
    const std::string_view text = it->second;
    const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), count);
    if (ec != std::errc() || end != text.data() + text.size() || count < 1 || count > kMaxCount) {
      throw UsageError("'" + std::string(text) + "' is not a count from 1 to 1000000", NextnameUsage());
    }
  }
  CString name = FromUtf8(w.operands.front());
  for (int i = 0; i < count; ++i) {
    name = CTextTools::GetNextName(name);
    WriteLine(out, ToUtf8(name));
  }
}

void RunUnits(std::span<const std::string_view> words, std::ostream& out) {
  const CommandWords w = SplitWords(words, "", "", DashWords::kOperands, UnitsUsage());
  if (w.help) {
    out << UnitsUsage();
    return;
  }
  if (w.operands.size() < 2) throw UsageError("expected a direction and at least one value", UnitsUsage());
  const std::string_view direction = w.operands.front();
  if (direction != "mm2inch" && direction != "inch2mm") {
    throw UsageError("unknown direction '" + std::string(direction) + "'", UnitsUsage());
  }
  std::vector<double> values;
  for (const std::string_view word : std::span(w.operands).subspan(1)) values.push_back(ParseNumber(word));
  for (const double v : values) {
    const double converted = direction == "mm2inch" ? CMathTools::MM2InchRound(v) : CMathTools::Inch2MMRound(v);
    WriteLine(out, FormatNumber(converted));
  }
}

}  // namespace cadtools::cli
