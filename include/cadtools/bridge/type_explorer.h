// The equipment browser of the component database behind a native facade.
//
//   CDotNetTypeExplorerWrapper browser;     // the host keeps one for its lifetime
//   if (browser.ShowDialog(u"C:\\Db\\Main.mdb", sys, common, symbols, u"Office", 7, u"de-DE",
//                          selection, TRUE, 12, &contactFilters) == 1) {
//     CString picked = browser.GetSelectedAsString();
//   }
//
// The managed dialog is made on the first call and kept, with its loaded
// catalogues, while the database path stays the same apart from letter
// case: a later call with "c:\db\MAIN.MDB" reuses it, and its other paths,
// skin, language and culture are then ignored (the dialog keeps the ones
// it was made with). Another path replaces the dialog. Each call clears
// the filters, reloads the catalogues, presets the selection, sets the
// contact filter only when a_bContactFilter is non-zero, refreshes the
// filters and shows the dialog: 1 for OK, 0 for anything else.
//
// Exceptions of the managed dialog reach the caller as CManagedException*,
// with the wait cursor restored.
#pragma once

#include <cadtools/bridge/gcroot.h>
#include <cadtools/bridge/host_types.h>
#include <cadtools/compat/cmap.h>
#include <cadtools/compat/cstring.h>
#include <cadtools/export.h>

#include <memory>

// The holder of the managed browser dialog: every operation is one call on
// the dialog.
class CADTOOLS_API TypeExplorerwrapper {
 public:
  // Makes the dialog for cultureId, sets its paths, skin and language and
  // initialises it.
  TypeExplorerwrapper(CString sDbPath, CString sSystemPath, CString sCommonPath, CString sSymbolPath,
                      CString sSkinName, int languageId, CString cultureId);
  TypeExplorerwrapper(const TypeExplorerwrapper&) = delete;
  TypeExplorerwrapper& operator=(const TypeExplorerwrapper&) = delete;
  // Releases the dialog (its handle); the dialog is not disposed.
  ~TypeExplorerwrapper();

  void ClearFilters();
  void ReloadCatalogs();
  void RefreshFilters();
  void SetSelectedItemsAsString(CString selected);
  CString GetSelectedItemsAsString();
  // The contact filter on for any non-zero value.
  void SetContactFilter(int bContactFilter);
  void SetContactFilterModuleId(int nContactFilterModuleId);
  // AddContactFilter(key, value) per pair, in the map's iteration order;
  // nothing for a null or empty map.
  void AddContactFilters(CMapStringToString* pMapOfContactFilters);
  // 1 when the dialog closed with OK, else 0.
  int ShowDialog();

 private:
  gcroot<OrvDatabaseControls::OrvEquipmentBrowserDialog> m_dialog;
};

class CADTOOLS_API CDotNetTypeExplorerWrapper {
 public:
  CDotNetTypeExplorerWrapper();
  // Copies share the holder (and so the dialog), as the host's copies do;
  // the holder goes with the last of them.
  CDotNetTypeExplorerWrapper(const CDotNetTypeExplorerWrapper&) = default;
  CDotNetTypeExplorerWrapper& operator=(const CDotNetTypeExplorerWrapper&) = default;
  ~CDotNetTypeExplorerWrapper();

  int ShowDialog(CString sDbPath, CString sSystemPath, CString sCommonPath, CString sSymbolPath, CString sSkinName,
                 int languageId, CString cultureId, CString a_strSelectedTypes, int a_bContactFilter,
                 int a_nContactFilterModuleId, CMapStringToString* a_pMapContactFilters);
  // The dialog's selection, "" before the first ShowDialog. It stays
  // readable after the dialog closed, until the next ShowDialog presets
  // another.
  CString GetSelectedAsString();

 private:
  std::shared_ptr<TypeExplorerwrapper> m_pWrapper;
  CString m_strDbPath;
};
