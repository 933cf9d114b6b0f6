#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace doctor {

/// What the report and the program's window say.
enum class Text {
  Well,
  Odd,
  Failed,
  AddinWell,
  AddinMissing,
  FileMissing,
  FileNot32,
  Leftover,
  LoadWell,
  LoadNowhere,
  LoadOff,
  LoadOdd,
  DisabledNot,
  Disabled,
  ClientWell,
  ClientMissing,
  ClientRuns,
  ClientRunsNot,
  ClientHangs,
  MapiWell,
  MapiMissing,
  RouteLibrary,
  RouteFile,
  SettingSet,
  SettingUnset,
  SettingBad,
  SettingMisspelt,
  On,
  Off,
  NotChosen,
  TraceOff,
  TraceOn,
  TraceBig,
  FolderNotWritable,
  TraceNotWritable,
  OutlookWell,
  OutlookMissing,
  OutlookVersion,
  Windows,
  // What to do.
  Reinstall,
  PutRight,
  AskAdministrator,
  InstallClient,
  StartClient,
  RestartClient,
  CorrectValue,
  EmptyTrace,
  InstallOutlook,
  // The window.
  Title,
  Copy,
  Save,
  PutRightButton,
  TraceButton,
  WriteTrace,
  OnlyProblems,
  EmptyButton,
  AskPutRight,
  NothingToPutRight,
  RestartOutlook,
  AskEmpty,
  Count,
};

/// The column of a language id in every table of six languages, as the table of settings orders
/// them; English for all others.
std::size_t languageColumn(std::int32_t langId);

/// The text in a language, with `first` and `second` in the place of "%1" and "%2".
std::u16string textOf(std::size_t language, Text text, std::u16string_view first = {},
                      std::u16string_view second = {});

}  // namespace doctor
