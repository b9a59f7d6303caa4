// The equipment editor of the component database behind a native facade.
//
//   CDotNetTypeEditorWrapper editor;
//   int fetched = editor.ShowDialog(db, sys, common, symbols, u"Office", 7, u"de-DE", &modules, &ids);
//   if (fetched) RefreshSymbolCache();
//
// Every call makes a fresh dialog, fills it (the channel modules in the
// map's order, then each component id: an element of the list that holds
// exactly three strings; elements of any other size are skipped), shows it
// and releases it. The result is whether the dialog downloaded symbols
// (1 or 0), whatever the user closed it with: the host only needs to know
// whether to refresh its symbol cache.
//
// Exceptions of the managed dialog reach the caller as CManagedException*;
// the wait cursor is restored and the dialog released as they pass.
#pragma once

#include <cadtools/bridge/gcroot.h>
#include <cadtools/bridge/host_types.h>
#include <cadtools/compat/cmap.h>
#include <cadtools/compat/coblist.h>
#include <cadtools/compat/cstring.h>
#include <cadtools/export.h>

// Builds, fills, shows and releases the managed editor dialog, all in its
// constructor.
class CADTOOLS_API TypeEditorWrapper {
 public:
  TypeEditorWrapper(CString sDbPath, CString sSystemPath, CString sCommonPath, CString sSymbolPath,
                    CString sSkinName, int languageId, CString cultureId, CMapStringToString* pMapOfModuleNames,
                    CObList* pListOfComponentIds);

  // IsSymbolsDownloaded() of the dialog once it closed: 1 or 0.
  int m_bSymbolsDownloaded;
};

class CADTOOLS_API CDotNetTypeEditorWrapper {
 public:
  int ShowDialog(CString sDbPath, CString sSystemPath, CString sCommonPath, CString sSymbolPath, CString sSkinName,
                 int languageId, CString cultureId, CMapStringToString* pMapOfModuleNames,
                 CObList* pListOfComponentIds);
};
