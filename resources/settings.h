#pragma once

#include <cstdint>
#include <string_view>

#include "platform/registry.h"

/// The one table of all registry values that the add-in reads. The logic takes roots, keys, names
/// and defaults from it; policies, documents and samples are generated from it
/// (packaging/settings/).
namespace resources {

/// A text in the languages of those who administer. No double quotes and no line ends: group
/// policy's classic templates have no way to write them.
struct BilingualText {
  std::u16string_view english;
  std::u16string_view german;
};

/// Where a value lies. A key that ends in a backslash is continued by the file name of the host
/// program; an empty name is the key's default value.
struct RegistryPlace {
  platform::RegistryRoot root;
  std::u16string_view key;
  std::u16string_view name;
};

/// The host program as it continues such a key.
inline constexpr std::u16string_view HostProgram = u"OUTLOOK.EXE";

enum class SettingType {
  OnOff,     ///< a number, or a text that reads as one: on exactly when it is not 0
  TextOne,   ///< a text: on exactly when it is "1"
  Language,  ///< a language id; 0 or absent: not chosen
  Path,      ///< a text: a file or a folder
};

enum class SettingRead { AtStart, AtEachDial, AtEachClientStart, AtFirstTrace, AtEachTrace };

enum class SettingWriter {
  Administrator,  ///< by hand, script or policy, or the client's set-up
  ClientSetup,
  Windows,
};

struct Setting {
  /// Unique in the table; also the policy's name.
  std::u16string_view id;
  RegistryPlace place;
  SettingType type;
  /// What holds while the value is absent; meant for OnOff and TextOne.
  bool on;
  SettingRead read;
  SettingWriter writer;
  /// Offered as a policy.
  bool policy;
  BilingualText title;
  BilingualText help;
};

/// The languages of the add-in, in the order of the columns of every table of texts.
struct SettingLanguage {
  std::u16string_view id;
  std::int32_t langId;  ///< the value of a Language setting
  std::u16string_view code;
  std::u16string_view ownName;
  BilingualText title;
};

inline constexpr SettingLanguage SettingLanguages[] = {
    {u"German", 1031, u"DE", u"Deutsch", {u"German", u"Deutsch"}},
    {u"English", 1033, u"EN", u"English", {u"English", u"Englisch"}},
    {u"French", 1036, u"FR", u"Français", {u"French", u"Französisch"}},
    {u"Italian", 1040, u"IT", u"Italiano", {u"Italian", u"Italienisch"}},
    {u"Spanish", 1034, u"ES", u"Español", {u"Spanish", u"Spanisch"}},
    {u"Portuguese", 1046, u"PT", u"Português", {u"Portuguese", u"Portugiesisch"}},
};

namespace settingKeys {
inline constexpr std::u16string_view AddIn = u"Software\\K9T\\CXComAddIn";
inline constexpr std::u16string_view Client = u"Software\\K9T\\Velnor30\\AddIn001";
}  // namespace settingKeys

inline constexpr auto CurrentUser = platform::RegistryRoot::CurrentUser;

inline constexpr Setting Settings[] = {
    {u"StartWithOutlook",
     {CurrentUser, settingKeys::Client, u"StartWithOutlook"},
     SettingType::OnOff,
     false,
     SettingRead::AtStart,
     SettingWriter::Administrator,
     true,
     {u"Start Velnor with Outlook", u"Velnor mit Outlook starten"},
     {u"Starts the telephony client hidden, once, some seconds after Outlook. Recommended: while "
      u"the "
      u"client does not run, a click on Dial does nothing, without a message. Off unless set.",
      u"Startet den Telefonie-Client verborgen, einmal, einige Sekunden nach Outlook. Empfohlen: "
      u"Solange der Client nicht läuft, bewirkt ein Klick auf Wählen nichts, ohne jede Meldung. "
      u"Ohne Vorgabe aus."}},
    {u"StopWithOutlook",
     {CurrentUser, settingKeys::Client, u"StopWithOutlook"},
     SettingType::OnOff,
     false,
     SettingRead::AtStart,
     SettingWriter::Administrator,
     true,
     {u"End Velnor with Outlook", u"Velnor mit Outlook beenden"},
     {u"Ends the telephony client when Outlook's last window closes. Users who also telephone "
      u"without Outlook lose their client then. Off unless set.",
      u"Beendet den Telefonie-Client, wenn das letzte Fenster von Outlook geschlossen wird. Wer "
      u"auch "
      u"ohne Outlook telefoniert, verliert dann seinen Client. Ohne Vorgabe aus."}},
    {u"ShowInspectorToolBar",
     {CurrentUser, settingKeys::AddIn, u"ShowInspectorToolBar"},
     SettingType::OnOff,
     true,
     SettingRead::AtStart,
     SettingWriter::Administrator,
     true,
     {u"Toolbar in the windows of items", u"Symbolleiste in den Fenstern von Elementen"},
     {u"Gives the windows of contacts, mails, appointments and tasks a toolbar of their own "
      u"(Outlook 2000 to 2003; the ribbon of Outlook 2007 is not concerned). On unless set.",
      u"Gibt den Fenstern von Kontakten, Nachrichten, Terminen und Aufgaben eine eigene "
      u"Symbolleiste (Outlook 2000 bis 2003; das Menüband von Outlook 2007 ist nicht betroffen). "
      u"Ohne Vorgabe an."}},
    {u"IgnoreSelChange",
     {CurrentUser, settingKeys::AddIn, u"IgnoreSelChange"},
     SettingType::OnOff,
     false,
     SettingRead::AtStart,
     SettingWriter::Administrator,
     true,
     {u"Do not follow the selection", u"Der Auswahl nicht folgen"},
     {u"The toolbar of Outlook's main windows no longer looks at each item that is selected: the "
      u"actions button does not show the selected person's name. For slow machines and mailboxes. "
      u"Off unless set.",
      u"Die Symbolleiste der Hauptfenster von Outlook betrachtet nicht mehr jedes ausgewählte "
      u"Element: Die Schaltfläche für Aktionen zeigt den Namen der ausgewählten Person nicht an. "
      u"Für langsame Rechner und Postfächer. Ohne Vorgabe aus."}},
    {u"IgnoreSelChangeOfMachine",
     {platform::RegistryRoot::LocalMachine, settingKeys::AddIn, u"IgnoreSelChange"},
     SettingType::OnOff,
     false,
     SettingRead::AtStart,
     SettingWriter::Administrator,
     true,
     {u"Do not follow the selection, for all users of the machine",
      u"Der Auswahl nicht folgen, für alle Benutzer des Rechners"},
     {u"The same for everybody who uses the machine. Asked only where the user's own setting is "
      u"not "
      u"on: a user can't switch it off. Off unless set.",
      u"Dasselbe für alle, die den Rechner benutzen. Wird nur gefragt, wo die Einstellung des "
      u"Benutzers nicht an ist: Ein Benutzer kann es nicht ausschalten. Ohne Vorgabe aus."}},
    {u"UseMapi",
     {CurrentUser, settingKeys::AddIn, u"UseMapi"},
     SettingType::OnOff,
     true,
     SettingRead::AtStart,
     SettingWriter::Administrator,
     true,
     {u"Numbers of senders and recipients", u"Rufnummern von Absendern und Empfängern"},
     {u"Lets the add-in ask the MAPI helper library for the numbers of senders and recipients. "
      u"When "
      u"off, mails and appointments offer no numbers; contacts still offer theirs. On unless set.",
      u"Lässt das Add-In die MAPI-Hilfsbibliothek nach den Rufnummern von Absendern und Empfängern "
      u"fragen. Ist es aus, bieten Nachrichten und Termine keine Nummern an, Kontakte weiterhin. "
      u"Ohne Vorgabe an."}},
    {u"DialRemote",
     {CurrentUser, settingKeys::AddIn, u"DialRemote"},
     SettingType::OnOff,
     false,
     SettingRead::AtEachDial,
     SettingWriter::Administrator,
     true,
     {u"Dial by remote control", u"Über die Fernsteuerung wählen"},
     {u"Hands each number to the client's remote control, which chooses the line itself, instead "
      u"of "
      u"dialling on the first line. Counts from the next call on. Off unless set.",
      u"Übergibt jede Nummer der Fernsteuerung des Clients, die die Leitung selbst wählt, statt "
      u"auf "
      u"der ersten Leitung zu wählen. Gilt ab dem nächsten Anruf. Ohne Vorgabe aus."}},
    {u"LanguageOfOutlook",
     {CurrentUser, u"Software\\K9T\\Localization\\LangID\\Applications\\", u"LangID"},
     SettingType::Language,
     false,
     SettingRead::AtStart,
     SettingWriter::Administrator,
     true,
     {u"Language of the add-in in Outlook", u"Sprache des Add-Ins in Outlook"},
     {u"The language of buttons, menus and messages in Outlook, before every other choice. Unless "
      u"set, the maker's language service decides, then the language of all Velnor products, then "
      u"Windows.",
      u"Die Sprache von Schaltflächen, Menüs und Meldungen in Outlook, vor jeder anderen Wahl. "
      u"Ohne "
      u"Vorgabe entscheidet der Sprachdienst des Herstellers, dann die Sprache aller "
      u"Velnor-Produkte, dann Windows."}},
    {u"Language",
     {CurrentUser, u"Software\\K9T\\Localization\\LangID", u"LangID"},
     SettingType::Language,
     false,
     SettingRead::AtStart,
     SettingWriter::Administrator,
     true,
     {u"Language of all Velnor products", u"Sprache aller Velnor-Produkte"},
     {u"The user's language in all products of the maker, as far as they have none of their own. "
      u"Unless set, the add-in speaks the language of Windows, and English where it has no texts "
      u"in "
      u"that.",
      u"Die Sprache des Benutzers in allen Produkten des Herstellers, soweit sie keine eigene "
      u"haben. "
      u"Ohne Vorgabe spricht das Add-In die Sprache von Windows, und Englisch, wo es dafür keine "
      u"Texte hat."}},
    {u"LogFile",
     {CurrentUser, u"Software\\K9T\\Logging", u"LogFile"},
     SettingType::TextOne,
     false,
     SettingRead::AtEachTrace,
     SettingWriter::Administrator,
     true,
     {u"Trace file", u"Protokolldatei"},
     {u"Writes what the add-in does to VelnorLog\\Log_cxolcom.txt in the user's local application "
      u"data, unless the maker's logging library is installed. The file holds names and numbers "
      u"and "
      u"grows without limit: for finding a fault only. Off unless set.",
      u"Schreibt, was das Add-In tut, in VelnorLog\\Log_cxolcom.txt in den lokalen Anwendungsdaten "
      u"des Benutzers, außer wenn die Protokollbibliothek des Herstellers installiert ist. Die "
      u"Datei enthält Namen und Nummern und wächst unbegrenzt: nur zur Fehlersuche. Ohne Vorgabe "
      u"aus."}},
    {u"VBLogFile",
     {CurrentUser, u"Software\\K9T\\Log", u"VBLogFile"},
     SettingType::TextOne,
     false,
     SettingRead::AtEachTrace,
     SettingWriter::ClientSetup,
     false,
     {u"Trace file beside the logging library", u"Protokolldatei neben der Protokollbibliothek"},
     {u"Would switch the trace file on while the maker's logging library is in use. The trace then "
      u"goes to that library and no file is written, so the value has no effect.",
      u"Würde die Protokolldatei einschalten, während die Protokollbibliothek des Herstellers "
      u"benutzt wird. Das Protokoll geht dann an diese Bibliothek und keine Datei wird "
      u"geschrieben, der Wert bleibt also ohne Wirkung."}},
    {u"ClientProgram",
     {platform::RegistryRoot::ClassesRoot,
      u"CLSID\\{4B7D2A91-3C5E-11D4-9F21-00A0C9E4B7D3}\\LocalServer32", u""},
     SettingType::Path,
     false,
     SettingRead::AtEachClientStart,
     SettingWriter::ClientSetup,
     false,
     {u"Program of the telephony client", u"Programm des Telefonie-Clients"},
     {u"Full path of the client's program. Without it the add-in can't start the client.",
      u"Voller Pfad des Programms. Ohne ihn kann das Add-In den Client nicht starten."}},
    {u"LocalAppData",
     {CurrentUser, u"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders",
      u"Local AppData"},
     SettingType::Path,
     false,
     SettingRead::AtFirstTrace,
     SettingWriter::Windows,
     false,
     {u"Folder of the user's local application data",
      u"Ordner der lokalen Anwendungsdaten des Benutzers"},
     {u"The trace file lies below it. Windows keeps the value.",
      u"Darunter liegt die Protokolldatei. Windows pflegt den Wert."}},
};

/// The row with this id. An id that is not in the table does not compile, and nothing but what the
/// caller keeps of the row goes into the program.
consteval Setting setting(std::u16string_view id) {
  for (const auto& row : Settings) {
    if (row.id == id) return row;
  }
  throw "no such setting";
}

}  // namespace resources
