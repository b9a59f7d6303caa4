// COM pointers and the managed objects behind them.
//
// The host hands managed objects over as COM interfaces (its docking pane
// as an IDispatch); the bridge turns them back into the managed object:
//
//   Object pane = ObjectForComPointer(a_pPane, u"Orv.API.Manager.OrvDockingPane, Orv.API.Manager");
//   // an object of another type: CManagedException* System.InvalidCastException
//
// Tests play the host with DispatchPointerFor, which gives the IDispatch of
// a managed object (released with ReleaseComPointer).
#pragma once

#include <cadtools/bridge/runtime.h>
#include <cadtools/compat/win_types.h>
#include <cadtools/export.h>

#if defined(_WIN32)
#include <oaidl.h>
#endif

namespace cadtools::bridge {

CADTOOLS_API Object ObjectForComPointer(const void* pointer, WStringView type);
CADTOOLS_API IDispatch* DispatchPointerFor(const Object& object);
CADTOOLS_API void ReleaseComPointer(const void* pointer);

}  // namespace cadtools::bridge
