#include <gtest/gtest.h>

#include "simulator/outlook/Markup.h"
#include "standin/outlook/AddinEntry.h"
#include "standin/outlook/HostPictures.h"
#include "standin/outlook/RegistryKeeper.h"
#include "standin/outlook/TraceTail.h"
#include "standin/outlook/UserClipboard.h"
#include "windows/com/errors.h"
#include "windows/com/text.h"
#include "windows/com/values.h"

namespace {

using platform::RegistryRoot;

constexpr std::u16string_view Key = u"Software\\Velnor Stand-in\\Test";

TEST(RegistryKeeper, PutsBackWhatItChanged) {
  windows::Registry registry;
  standin::RegistryKeeper outer;
  outer.setText(RegistryRoot::CurrentUser, Key, u"Kept", u"before");
  {
    standin::RegistryKeeper keeper;
    keeper.setDword(RegistryRoot::CurrentUser, Key, u"Kept", 1);
    keeper.setDword(RegistryRoot::CurrentUser, Key, u"Kept", 2);
    keeper.setDword(RegistryRoot::CurrentUser, Key, u"New", 3);
    EXPECT_FALSE(keeper.set(RegistryRoot::CurrentUser, Key, u"Absent", std::nullopt));
    EXPECT_EQ(platform::dwordOf(registry.read(RegistryRoot::CurrentUser, Key, u"Kept")), 2u);
  }
  const auto kept = registry.read(RegistryRoot::CurrentUser, Key, u"Kept");
  ASSERT_TRUE(kept);
  EXPECT_TRUE(kept->text.starts_with(u"before"));
  EXPECT_FALSE(registry.read(RegistryRoot::CurrentUser, Key, u"New"));
  registry.deleteKey(RegistryRoot::CurrentUser, Key);
}

TEST(AddinEntry, IsLoadedAtTheStartOnlyWhenItWasConnectedLast) {
  constexpr std::u16string_view key = u"Software\\Microsoft\\Office\\Outlook\\Addins\\Test.Addin";
  windows::Registry registry;
  standin::AddinEntry entry(registry, u"Test.Addin");
  EXPECT_FALSE(entry.exists());
  entry.keepConnected(true);
  EXPECT_FALSE(entry.exists());
  standin::RegistryKeeper keeper;
  const struct {
    std::uint32_t behavior;
    bool loads;
  } rows[] = {{0, false}, {1, false}, {2, false}, {3, true}, {8, false}, {9, false}};
  for (const auto& row : rows) {
    keeper.setDword(RegistryRoot::CurrentUser, key, u"LoadBehavior", row.behavior);
    EXPECT_EQ(entry.loadsAtStart(), row.loads) << row.behavior;
  }
  keeper.setDword(RegistryRoot::CurrentUser, key, u"LoadBehavior", 3);
  entry.keepConnected(false);
  EXPECT_FALSE(entry.loadsAtStart());
  entry.keepConnected(true);
  EXPECT_TRUE(entry.loadsAtStart());
  registry.deleteKey(RegistryRoot::CurrentUser, key);
}

TEST(TraceFile, EntriesMayHoldLineEnds) {
  standin::TraceFile file;
  const std::u16string folder = file.path().substr(0, file.path().rfind(u'\\'));
  CreateDirectoryW(windows::wide(folder), nullptr);
  const HANDLE handle = CreateFileW(windows::wide(file.path()), FILE_APPEND_DATA, FILE_SHARE_READ,
                                    nullptr, OPEN_ALWAYS, 0, nullptr);
  ASSERT_NE(handle, INVALID_HANDLE_VALUE);
  const std::string text =
      "07.03.2008 14:05:09.042 Warning: one\r\ntwo\r\n"
      "07.03.2008 14:05:09.043 Debug:   M\xfcller\r\n";
  DWORD written = 0;
  WriteFile(handle, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
  CloseHandle(handle);
  const auto entries = file.read();
  ASSERT_EQ(entries.size(), 2u);
  EXPECT_TRUE(entries[0].note.text == u"one\r\ntwo");
  EXPECT_TRUE(entries[0].note.level == u"Warning");
  EXPECT_TRUE(entries[1].note.text == u"M\u00fcller");
  EXPECT_TRUE(entries[1].note.time == u"14:05:09.043");
  EXPECT_LT(entries[0].fileSize, entries[1].fileSize);
  EXPECT_TRUE(file.read().empty());
  DeleteFileW(windows::wide(file.path()));
}

/// A bitmap with a diagonal of this colour on white.
HBITMAP diagonal(COLORREF colour, int side = 16) {
  const HDC screen = GetDC(nullptr);
  const HDC canvas = CreateCompatibleDC(screen);
  const HBITMAP bitmap = CreateCompatibleBitmap(screen, side, side);
  ReleaseDC(nullptr, screen);
  const HGDIOBJ old = SelectObject(canvas, bitmap);
  PatBlt(canvas, 0, 0, side, side, WHITENESS);
  for (int i = 0; i < side; ++i) SetPixel(canvas, i, i, colour);
  SelectObject(canvas, old);
  DeleteDC(canvas);
  return bitmap;
}

TEST(HostPictures, TellsPicturesApartByWhatIsOnThem) {
  standin::HostPictures pictures(u"No.Such.Addin");
  const auto paste = [&](COLORREF colour) {
    EXPECT_TRUE(OpenClipboard(GetDesktopWindow()));
    EmptyClipboard();
    SetClipboardData(CF_BITMAP, diagonal(colour));
    CloseClipboard();
    return pictures.fromClipboard();
  };
  const auto red = paste(RGB(255, 0, 0));
  const auto blue = paste(RGB(0, 0, 255));
  EXPECT_FALSE(red == blue);
  EXPECT_TRUE(paste(RGB(255, 0, 0)) == red);
  EXPECT_NE(pictures.find(red), nullptr);
  EXPECT_EQ(pictures.find(u"dial"), nullptr);
  EXPECT_TRUE(OpenClipboard(nullptr));
  EmptyClipboard();
  CloseClipboard();
  EXPECT_TRUE(pictures.fromClipboard().empty());
}

TEST(HostPictures, TakesFacesOfTheRightSizeOnly) {
  standin::HostPictures pictures(u"No.Such.Addin");
  const auto picture = [](HBITMAP bitmap) {
    PICTDESC description{};
    description.cbSizeofstruct = sizeof description;
    description.picType = PICTYPE_BITMAP;
    description.bmp.hbitmap = bitmap;
    windows::ComPtr<IDispatch> made;
    windows::check(
        OleCreatePictureIndirect(&description, IID_IPictureDisp, TRUE, made.receiveVoid()));
    return windows::objectOf(made.get());
  };
  const auto refusal = [&](const automation::Object& face, const automation::Object& mask) {
    try {
      pictures.face(face, mask);
    } catch (const automation::Error& error) {
      return error.number();
    }
    return 0;
  };
  const auto red = picture(diagonal(RGB(255, 0, 0)));
  const auto mask = picture(diagonal(RGB(0, 0, 0)));
  const auto large = picture(diagonal(RGB(255, 0, 0), 32));
  EXPECT_EQ(refusal(red, mask), 0);
  EXPECT_EQ(refusal(red, {}), 0);
  EXPECT_FALSE(pictures.face(red, mask) == pictures.face(red, {})) << "a square is seen";
  EXPECT_EQ(refusal(large, mask), 5);
  EXPECT_EQ(refusal(red, large), 5);
}

TEST(UserClipboard, AWatchTakesWhatIsNewOnIt) {
  standin::copyText(u"a text");
  EXPECT_TRUE(standin::copiedText() == u"a text");
  const standin::ClipboardWatch watch(200);
  ASSERT_TRUE(OpenClipboard(GetDesktopWindow()));
  EmptyClipboard();
  CloseClipboard();
  watch.catchUp();
  EXPECT_FALSE(OpenClipboard(GetDesktopWindow()));
  EXPECT_TRUE(standin::copiedText().empty()) << "it lets go again";
}

TEST(Markup, ReadsElementsAndRefusesWhatIsNotWellFormed) {
  const simulator::MarkupElement root = simulator::readMarkup(
      u"<a xmlns=\"urn:x\" label=\"Sm\u00efth &amp; S\u00f6hne\"><!-- no --><b/><b c=\"1\"/></a>");
  EXPECT_EQ(root.name, "a");
  EXPECT_EQ(root.attributes.at(0), (std::pair<std::string, std::string>("xmlns", "urn:x")));
  EXPECT_EQ(root.attribute("label"), "Sm\xc3\xafth & S\xc3\xb6hne");
  EXPECT_EQ(root.attribute("c"), "");
  EXPECT_FALSE(root.holdsText);
  ASSERT_EQ(root.children.size(), 2u);
  // A name space holds for what is inside; it is declared once.
  EXPECT_EQ(root.children[1].attributes.size(), 1u);
  EXPECT_TRUE(simulator::readMarkup(u"<a><b/>text</a>").holdsText);
  for (const char16_t* bad : {u"<a>", u"<a b=\"&\"/>", u"<a/><b/>", u"text"})
    EXPECT_THROW(simulator::readMarkup(bad), simulator::MarkupError);
}

}  // namespace
