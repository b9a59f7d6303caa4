#include "help.h"

#include "geom.h"

#include <algorithm>

namespace cadtools::cli {
namespace {

std::string QuestionList() {
  std::string text = "questions:\n";
  for (const Question& q : Questions()) {
    text += "  " + std::string(q.name) + " " + std::string(q.operands) + "\n";
    text += "      " + std::string(q.summary) + "\n";
  }
  return text;
}

constexpr const char* kOptions =
    "options:\n"
    "  --svg FILE        also draw the input and the answer as an SVG picture\n"
    "  --inclusive 0|1   intersect: count segment ends with a slack of 1e-6\n"
    "  --coarse 0|1      intersect, angle: tolerance 0.001 instead of 2.2e-13\n"
    "  --diagonals       zone: cut the rectangle by its diagonals\n"
    "  Options may stand anywhere after the question, also as --name=value.\n";

}  // namespace

std::string ShortUsage() {
  return "usage: cadtools --help | --version\n"
         "       cadtools tour\n"
         "       cadtools geom QUESTION NUMBERS... [OPTIONS] [--svg FILE]\n"
         "       cadtools natsort [-r] [-u] [FILE...]\n"
         "       cadtools like PATTERN [FILE...]\n"
         "       cadtools nextname NAME [-n COUNT]\n"
         "       cadtools units mm2inch|inch2mm VALUE...\n"
         "       cadtools settings [--app NAME | --root ROOT] [--store DIR] COMMAND ...\n"
         "       cadtools placement [--app NAME | --root ROOT] [--store DIR] list|clear\n"
         "       cadtools convert --from CP --to CP [FILE]\n"
         "       cadtools charset [NAME|NUMBER]\n"
         "       cadtools font [--app NAME | --root ROOT] [--store DIR]\n"
         "       cadtools symbol load DATABASE\\FOLDER\\SYMBOL [--database DIR] | type TEXT\n"
         "       cadtools pane [--selector] WIDTH HEIGHT [--svg FILE]\n";
}

std::string NatsortUsage() {
  return "usage: cadtools natsort [-r] [-u] [FILE...]\n"
         "  Prints the lines of the files (or of standard input) in natural order:\n"
         "  digit runs compare as numbers (X2 before X10), case and white space are\n"
         "  ignored, equal lines keep their order.\n"
         "  -r  reverse the order\n"
         "  -u  print only the first of lines that compare equal\n";
}

std::string LikeUsage() {
  return "usage: cadtools like PATTERN [FILE...]\n"
         "  Prints the lines of the files (or of standard input) that match PATTERN,\n"
         "  ignoring case. '*' matches any run of characters; each piece between\n"
         "  stars is taken at its first occurrence, so '*ab' does not match 'abab'.\n";
}

std::string NextnameUsage() {
  return "usage: cadtools nextname NAME [-n COUNT]\n"
         "  Prints the COUNT names (default 1) that follow NAME, one per line:\n"
         "  K1 -> K2, X009 -> X010, A1B2 -> A2B3, AZ -> BA, z -> aa.\n"
         "  Write 'nextname -- -n1' for a name that starts with -n.\n";
}

std::string UnitsUsage() {
  return "usage: cadtools units mm2inch|inch2mm VALUE...\n"
         "  Converts each value, snapping the usual pen widths, text heights and\n"
         "  grid sizes to their conventional counterparts (3.175 mm -> 0.125 in,\n"
         "  0.25 in -> 6.35 mm); other values come out rounded to 5 decimals (inches)\n"
         "  or 2 decimals (millimetres).\n";
}

namespace {

struct SettingsCommand {
  std::string_view name;
  std::string_view synopsis;
  std::string_view summary;
};

constexpr SettingsCommand kSettingsCommands[] = {
    {"list", "list [KEY]", "tree of KEY's subkeys and values (default: the root)"},
    {"get", "get KEY [TYPE]", "print one value; with TYPE, read its data as TYPE"},
    {"set", "set KEY TYPE VALUE...", "write one value"},
    {"delete", "delete [-r] KEY", "remove one value; with -r, a key and everything below it"},
    {"export", "export [KEY] FILE.reg", "write KEY (default: the root) and everything below it as a .reg file"},
    {"import", "import FILE.reg", "apply a .reg file, all of it or nothing (a fault, a refused store)"},
    {"copy-machine", "copy-machine", "copy the root's machine-wide defaults to the user, keeping the user's values"},
};

constexpr const char* kSettingsNotes =
    "\n"
    "KEY is absolute (HKEY_CURRENT_USER\\..., HKCU\\..., HKEY_LOCAL_MACHINE\\..., HKLM\\...,\n"
    "HKEY_CLASSES_ROOT\\..., HKCR\\..., HKEY_USERS\\..., HKU\\...) or relative to the\n"
    "root, joined as the host's settings join it. For get, set\n"
    "and delete its last part is the value name; \"KEY\\\" names the key's default\n"
    "value. The root is \"Software\\Quenby\\NAME\\Version V8R1\\\" with the application\n"
    "name (--app NAME, default: this program's name), or --root ROOT as it stands\n"
    "(end it with a backslash, as the host must).\n"
    "\n"
    "TYPE: sz, expand_sz (one string each), multi_sz (any number of strings),\n"
    "dword, qword (decimal or 0x hex), binary, none, hex(N) (hex bytes: \"01 02 ff\"\n"
    "or \"01,02,ff\"), or the host's typed settings: float, bool (true/false),\n"
    "point X,Y, rect L,T,R,B (whole numbers) and wrect L,T,R,B (decimals), stored\n"
    "as the host stores them. REG_SZ, REG_DWORD, ... are accepted too. get prints\n"
    "TYPE and value(s) in this notation, strings quoted.\n"
    "\n"
    "--store DIR: off Windows, use the settings store in DIR instead of the\n"
    "user's own ($CADTOOLS_REGISTRY_DIR, else ~/.config/cadtools).\n"
    "\n"
    "exit status: 0 done, 1 no such key or value, a registry or file error, or a\n"
    ".reg file with a fault (FILE:LINE: what), 2 bad arguments.\n";

}  // namespace

std::string SettingsUsage() {
  std::string text =
      "usage: cadtools settings [--app NAME | --root ROOT] [--store DIR] COMMAND ...\n"
      "  Reads and writes the host's settings in the registry.\n\n"
      "commands:\n";
  for (const SettingsCommand& c : kSettingsCommands) {
    std::string line = "  " + std::string(c.synopsis);
    line.resize(std::max<std::size_t>(line.size() + 1, 26), ' ');
    text += line + std::string(c.summary) + "\n";
  }
  return text + kSettingsNotes;
}

std::string SettingsCommandUsage(std::string_view command) {
  for (const SettingsCommand& c : kSettingsCommands) {
    if (c.name == command) {
      return "usage: cadtools settings [--app NAME | --root ROOT] [--store DIR] " + std::string(c.synopsis) +
             "\n  " + std::string(c.summary) + "\n" + kSettingsNotes;
    }
  }
  return SettingsUsage();
}

std::string PlacementUsage() {
  return "usage: cadtools placement [--app NAME | --root ROOT] [--store DIR] list|clear\n"
         "  The dialog placements below the root in Settings\\WindowPos: one value per\n"
         "  dialog number, primary display size and resource module, named\n"
         "  IDD<number><width>x<height><module>, and its ...Maximized marker.\n\n"
         "  list   each value with its rectangle (left,top,right,bottom) or state; the\n"
         "         split of number and width is read as the widest plausible width\n"
         "  clear  delete them all; each dialog opens where the host puts it\n\n"
         "--app, --root and --store as for cadtools settings (see its --help).\n"
         "exit status: 0 done (also when nothing is stored), 1 a registry error,\n"
         "2 bad arguments.\n";
}

std::string ConvertUsage() {
  return "usage: cadtools convert --from CP --to CP [FILE]\n"
         "  Converts the bytes of FILE (or of standard input) from one code page to\n"
         "  another and writes them to standard output, unchanged otherwise (line ends\n"
         "  and NULs included). The results are Windows': bytes that do not decode\n"
         "  become what Windows reads them as (U+FFFD for broken UTF-8), characters the\n"
         "  target lacks its default character ('?' in most code pages).\n\n"
         "  CP is a code page number (1252, 932, 65001, also cp1252) or utf-8,\n"
         "  utf-16 / utf-16le (1200), utf-16be (1201), ansi or oem (the system's).\n"
         "  UTF-16 has no byte-order mark added or removed.\n\n"
         "exit status: 0 done, 1 the file could not be read, 2 bad arguments or an\n"
         "unknown code page.\n";
}

std::string CharsetUsage() {
  return "usage: cadtools charset [NAME|NUMBER]\n"
         "  A font charset number (0 to 255) with its name and code page, or a name\n"
         "  (trimmed, any letter case) with its number and code page:\n"
         "    cadtools charset 204        Cyrillic, code page 1251\n"
         "    cadtools charset ' greek '  161, code page 1253\n"
         "  A name the host does not know gives 1 (Default), as in the host. Without\n"
         "  an argument, every charset that has a name or a code page.\n";
}

std::string FontUsage() {
  return "usage: cadtools font [--app NAME | --root ROOT] [--store DIR]\n"
         "  The host's default font face and where it comes from: the setting\n"
         "  Settings\\Text\\DefaultFontName below the root (its first face when it lists\n"
         "  several, separated by ';'), else the host's string 19191 up to its '('.\n"
         "  Nothing is written.\n\n"
         "--app, --root and --store as for cadtools settings (see its --help).\n"
         "exit status: 0 done, 2 bad arguments.\n";
}

std::string SymbolUsage() {
  return "usage: cadtools symbol load DATABASE\\FOLDER\\SYMBOL [--database DIR]\n"
         "       cadtools symbol type TEXT\n"
         "  load: the symbol's entity count, object type and connection texts, as the\n"
         "  host's Load3DSymbolFromDb gives them, from the symbol database in DIR (a\n"
         "  folder DATABASE\\FOLDER\\SYMBOL.sym); without --database, the demonstration\n"
         "  database that comes with the build tree.\n"
         "  type: the object type for a component-type text, as TextToObjectType gives\n"
         "  it: '$Cable channel' in any letter case is 19102; unknown texts are 19000.\n"
         "  Both go through the managed bridge and the stand-ins for the host's symbol\n"
         "  components.\n\n"
         "exit status: 0 done, 1 no such symbol or no runtime, 2 bad arguments.\n";
}

std::string PaneUsage() {
  return "usage: cadtools pane [--selector] WIDTH HEIGHT [--svg FILE]\n"
         "  Where the bridge's windows put their parts, in pixels, as the library lays\n"
         "  them out: a docked pane's dialog fills its bar and keeps the pane control 5\n"
         "  pixels from every side; with --selector, the symbol selector's control and\n"
         "  its OK and Cancel buttons (75x23) in a client area of WIDTH by HEIGHT.\n"
         "  --svg FILE draws the parts.\n\n"
         "exit status: 0 done, 1 the picture could not be written, 2 bad arguments.\n";
}

std::string GeomShortUsage() {
  std::string names;
  for (const Question& q : Questions()) names += (names.empty() ? "" : ", ") + std::string(q.name);
  return "usage: cadtools geom QUESTION NUMBERS... [OPTIONS] [--svg FILE]\n  questions: " + names + "\n";
}

std::string GeomUsage() {
  return "usage: cadtools geom QUESTION NUMBERS... [OPTIONS] [--svg FILE]\n\n" + QuestionList() + "\n" +
         kOptions;
}

std::string FullHelp() {
  return ShortUsage() +
         "\n"
         "Puts the cadtools library in your hands: plane-geometry questions, natural\n"
         "sorting, wildcard filtering, next names, unit conversion, settings and code\n"
         "pages. Answers come one fact per line, such as 'code 2 (crossing within both\n"
         "segments)'.\n"
         "\n"
         "commands:\n"
         "  tour       a short walk through the library, every result computed live\n"
         "  geom       answer one geometry question below\n"
         "  natsort    sort lines in natural order (X2 before X10)\n"
         "  like       print the lines that match a '*' pattern\n"
         "  nextname   print the names that follow a name (K1, K2, ...)\n"
         "  units      convert millimetres and inches with snapping\n"
         "  settings   read, write, export and import the host's settings\n"
         "  placement  list or clear the dialog placements the host has stored\n"
         "  convert    convert text between code pages with Windows' results\n"
         "  charset    font charsets, their names and code pages\n"
         "  font       the host's default font face and where it comes from\n"
         "  symbol     load a three-dimensional symbol, or map a component type\n"
         "  pane       the docked pane's and the symbol selector's layouts\n"
         "  --version  print the version\n"
         "Each command prints its own usage with --help. Text is UTF-8.\n"
         "\n" +
         QuestionList() + "\n" + kOptions +
         "\n"
         "Numbers are decimal, as in 3, -0.5, 1e-3; nan and inf are refused. Pictures\n"
         "draw y growing downward, as in the host's rectangles (top < bottom).\n"
         "\n"
         "exit status: 0 answered, 1 a file could not be read or written, 2 bad\n"
         "arguments.\n"
         "\n"
         "example: cadtools geom intersect 0 0 2 0 1 -1 1 1 --svg crossing.svg\n";
}

}  // namespace cadtools::cli
