// CTextTools: the host's class of static text functions. Its members are
// declared by subject in the headers below and called as CTextTools::Name:
//
//   CTextTools::TrimChar(L"  --ab--  ", '-')      // "ab" (text editing)
//   CTextTools::NaturalCompare(u"x2", u"x10")     // -1 (natural names)
//   CTextTools::GetNextName(L"K099")              // "K100"
//   CTextTools::GetCharset(204)                   // "Cyrillic" (code pages)
#pragma once

#include <cadtools/export.h>
#include <cadtools/text/code_pages.h>
#include <cadtools/text/natural_names.h>
#include <cadtools/text/text_editing.h>

class CADTOOLS_API CTextTools : public cadtools::TextEditing, public cadtools::NaturalNames,
                                public cadtools::CodePages {
 public:
  CTextTools() = default;
  CTextTools(const CTextTools&) = default;
  CTextTools& operator=(const CTextTools&) = default;
  virtual ~CTextTools();
};
