// Three-dimensional symbol selection: a resizable dialog that hosts the
// host's managed symbol control, and loading a symbol without showing it.
//
//   CDotNetWrapper symbols;
//   CString path = u"Main\\Rails\\TS35";   // database\folder\symbol, preselected
//   int entities = 0, ok = 0;
//   LONG type = 0;
//   symbols.Select3DSymbol(u"C:\\Symbols", 0, path, entities, type, ok);
//   // OK: ok 1, path, entities and type of the chosen symbol (the path ""
//   //     when nothing was chosen); Cancel: ok 0, the rest untouched
//   CStringArray connections;
//   symbols.Load3DSymbolFromDb(u"C:\\Symbols", u"Main\\Rails\\TS35", entities, type, connections);
//   // 1 and the symbol's connection texts appended; 0, 0, 0 for an unknown
//   // symbol or a path that is not exactly three fields
//
// Object types come from the symbol's "$ComponentType" attribute:
//   TextToObjectType("$cable CHANNEL") -> 19102   (any case)
//   TextToObjectType(" $Rail")         -> 19000   (no trimming: unknown)
#pragma once

#include <cadtools/bridge/gcroot.h>
#include <cadtools/bridge/host_types.h>
#include <cadtools/bridge/winforms_control.h>
#include <cadtools/compat/cstring.h>
#include <cadtools/compat/cstring_array.h>
#include <cadtools/compat/win_types.h>
#include <cadtools/dialog/base_dialog.h>
#include <cadtools/export.h>

class CADTOOLS_API CSymbol3DSelectorDlg : public CBaseDialog {
 public:
  static constexpr UINT IDD = 8005;
  static constexpr int kControlId = 8006;  // the placeholder the control takes over
  static constexpr UINT kIconId = 115;
  // The smallest the user can make the dialog.
  static constexpr int kMinWidth = 320;
  static constexpr int kMinHeight = 300;

  explicit CSymbol3DSelectorDlg(CWnd* pParent = nullptr);

  // Makes the symbol control in place of the placeholder once.
  void DoDataExchange(CDataExchange* pDX) override;
  // The base's start-up, the small icon, the saved placement; then the
  // control in view mode with the libraries of m_strSymbolDirectory, and
  // m_strSymbolPath preselected when it is exactly three fields.
  BOOL OnInitDialog() override;
  // The layout, in fixed pixels, around the Cancel button's size.
  void OnSize(UINT nType, int cx, int cy) override;
  // 320 by 300 at the least.
  void OnGetMinMaxInfo(MINMAXINFO* lpMMI) override;
  // The chosen symbol's path and counts; ends with OK even when nothing
  // was chosen.
  void OnOK() override;

  // Loads a symbol by path without a window: 1 and its counts and
  // connections, or 0 (counts 0).
  int LoadSymbolFromDb(CString a_strSymbolPath, CStringArray& a_arrConnections);
  LONG TextToObjectType(const cadtools::bridge::Ref<System::String>& _componentType);

  CString m_strSymbolPath;
  CString m_strSymbolDirectory;
  int m_nEntityCount;
  LONG m_nObjectType;
  CWinFormsControl<Orv3DEditor::OrvSymbolControl> m_ctrlSymbol;

 private:
  // The entity count and object type of a symbol, through a diagram
  // interface.
  void TakeCounts(const cadtools::bridge::Object& diagram, const cadtools::bridge::Object& symbol);
};

class CADTOOLS_API CDotNetWrapper {
 public:
  // a_nPageType is accepted and not used. Returns 1.
  int Select3DSymbol(CString a_strSymbolDirectory, LONG a_nPageType, CString& a_strSymbolPath, int& a_nEntityCount,
                     LONG& a_nObjectType, int& a_bOk);
  int Load3DSymbolFromDb(CString a_strSymbolDirectory, CString a_strSymbolPath, int& a_nEntitiesCount,
                         LONG& a_nObjectType, CStringArray& a_arrConnections);
};
