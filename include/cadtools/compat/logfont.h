// LOGFONTW, the GDI font description, with its Windows layout on every
// target (from <windows.h> on Windows).
#pragma once

#include <cadtools/compat/win_types.h>

#if !defined(_WIN32)

#ifndef LF_FACESIZE
#define LF_FACESIZE 32
#endif

struct LOGFONTW {
  LONG lfHeight;
  LONG lfWidth;
  LONG lfEscapement;
  LONG lfOrientation;
  LONG lfWeight;
  BYTE lfItalic;
  BYTE lfUnderline;
  BYTE lfStrikeOut;
  BYTE lfCharSet;
  BYTE lfOutPrecision;
  BYTE lfClipPrecision;
  BYTE lfQuality;
  BYTE lfPitchAndFamily;
  WCHAR lfFaceName[LF_FACESIZE];
};

#endif
