// The tour's section on charsets, code pages and the default font.
#include "code_page_commands.h"
#include "settings.h"
#include "tour_steps.h"

#include <cadtools/registry/reg_values.h>
#include <cadtools/registry/registry_api.h>

#include <cadtools/text/host_strings.h>
#include <cadtools/text_tools.h>

namespace cadtools::cli {
namespace {

// Bytes as hex pairs: "c3 a9".
std::string Hex(std::string_view bytes) {
  static constexpr char kDigits[] = "0123456789abcdef";
  std::string text;
  for (const char c : bytes) {
    const auto b = static_cast<unsigned char>(c);
    if (!text.empty()) text += ' ';
    text += kDigits[b >> 4];
    text += kDigits[b & 0xF];
  }
  return text;
}

}  // namespace

void CodePagesTour(Tour& t) {
  t.Heading("Charsets and code pages: three tables that do not agree in every row");
  t.Step("GetCharset(204)", Quoted(CTextTools::GetCharset(204)));
  t.Step("GetCharset(\" greek \")", Int(CTextTools::GetCharset(CString(CADTOOLS_WIDE(" greek ")))), "trimmed, any case");
  t.Step("GetCharset(\"Klingon\")", Int(CTextTools::GetCharset(CString(CADTOOLS_WIDE("Klingon")))),
         "unknown names are Default");
  t.Step("GetCharset(77)", Quoted(CTextTools::GetCharset(77)), "no name...");
  t.Step("CharsetToCodePage(77)", Int(CTextTools::CharsetToCodePage(77)), "...but a code page");
  t.Step("CharsetToCodePage(163)", Int(CTextTools::CharsetToCodePage(163)), "Vietnamese has none");

  t.Heading("Conversions with Windows' results (cadtools convert)");
  t.Step("1252 \"80 e9\" to UTF-8", Hex(ConvertText(1252, 65001, "\x80\xE9")), "euro sign and e acute");
  t.Step("UTF-8 \"c3 28\" to UTF-16", Hex(ConvertText(65001, kUtf16Le, "\xC3(")), "a broken sequence is U+FFFD");
  t.Step("UTF-8 \"e2 82 ac\" to 437", Hex(ConvertText(65001, 437, "\xE2\x82\xAC")), "437 has no euro sign");
  t.Step("932 \"82 a0\" to UTF-8", Hex(ConvertText(932, 65001, "\x82\xA0")), "hiragana a");
  t.Step("MB2WideChar(\"\\xC0\\xAF\")", Quoted(CTextTools::MB2WideChar("\xC0\xAF")), "overlong: replaced");
}

void DefaultFontWalk(Tour& t) {
  const auto shown = [] {
    const DefaultFontSource font = FindDefaultFont();
    return Quoted(font.face) + (font.from_setting ? " from the setting" : " from the host string");
  };
  const CString before = LoadHostString(19191);
  SetHostString(19191, CString(CADTOOLS_WIDE("Tahoma (8pt)")));
  t.Step("string 19191 \"Tahoma (8pt)\", setting \"Arial\"", shown(), "the setting wins");
  CRegString(CADTOOLS_WIDE("Settings\\Text\\DefaultFontName")) = CString(CADTOOLS_WIDE("Segoe UI;Arial"));
  t.Step("setting \"Segoe UI;Arial\"", shown(), "a list gives its first face");
  const SettingsLocation text = ResolveSettingsKey("Settings\\Text", SettingsRoot(), false);
  registry::SHDeleteKeyW(registry::HiveHandle(text.hive), text.path.c_str());
  t.Step("no setting", shown(), "the part before '('");
  if (before.IsEmpty()) {
    ClearHostString(19191);
  } else {
    SetHostString(19191, before);
  }
}

}  // namespace cadtools::cli
