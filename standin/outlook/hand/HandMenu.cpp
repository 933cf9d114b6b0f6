#include "standin/outlook/hand/HandMenu.h"

#include <string>

#include "simulator/data/ItemKinds.h"

namespace standin {

HMENU createHandMenu(simulator::WindowKind kind) {
  const bool explorer = kind == simulator::WindowKind::Explorer;
  const auto append = [](HMENU menu, HandCommand command, const wchar_t* caption) {
    AppendMenuW(menu, MF_STRING, static_cast<UINT_PTR>(command), caption);
  };
  const auto appendMenu = [](HMENU menu, HMENU popup, const wchar_t* caption) {
    AppendMenuW(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(popup), caption);
  };
  const HMENU items = CreatePopupMenu();
  UINT_PTR id = static_cast<UINT_PTR>(HandCommand::NewItem);
  for (const simulator::ItemKind* item : simulator::folderKinds()) {
    std::string caption = "&" + std::string(item->word);
    caption[1] = static_cast<char>(caption[1] - 'a' + 'A');
    AppendMenuA(items, MF_STRING, id++, caption.c_str());
  }
  const HMENU file = CreatePopupMenu();
  appendMenu(file, items, L"Ne&w");
  if (explorer) append(file, HandCommand::NewExplorer, L"New &window");
  append(file, HandCommand::Close, L"&Close");
  const HMENU menu = CreateMenu();
  appendMenu(menu, file, L"&File");
  if (!explorer) return menu;
  append(file, HandCommand::Quit, L"E&xit");
  const HMENU view = CreatePopupMenu();
  append(view, HandCommand::SwitchView, L"Switch &view");
  appendMenu(menu, view, L"&View");
  const HMENU tools = CreatePopupMenu();
  append(tools, HandCommand::SwitchAddin, L"&Add-in on or off");
  appendMenu(menu, tools, L"&Tools");
  return menu;
}

std::optional<outlook::ItemType> newItemOf(int command) {
  const auto type =
      static_cast<outlook::ItemType>(command - static_cast<int>(HandCommand::NewItem));
  return simulator::kindOf(type) ? std::optional(type) : std::nullopt;
}

}  // namespace standin
