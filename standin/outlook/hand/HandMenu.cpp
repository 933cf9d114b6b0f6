#include "standin/outlook/hand/HandMenu.h"

namespace standin {
namespace {

struct MenuRow {
  HandCommand command;
  const wchar_t* caption;
};
constexpr MenuRow Rows[] = {
    {HandCommand::NewExplorer, L"New &window"},
    {HandCommand::SwitchView, L"Switch &view"},
    {HandCommand::SwitchAddin, L"&Add-in on or off"},
    {HandCommand::Quit, L"&Quit"},
};
constexpr const wchar_t* Items[] = {L"&Mail",    L"&Appointment", L"&Contact", L"&Task",
                                    L"&Journal", L"&Note",        L"&Post"};

}  // namespace

HMENU createHandMenu() {
  const HMENU file = CreatePopupMenu();
  for (const MenuRow& row : Rows)
    AppendMenuW(file, MF_STRING, static_cast<UINT_PTR>(row.command), row.caption);
  const HMENU items = CreatePopupMenu();
  UINT_PTR id = static_cast<UINT_PTR>(HandCommand::NewItem);
  for (const wchar_t* item : Items) AppendMenuW(items, MF_STRING, id++, item);
  const HMENU menu = CreateMenu();
  AppendMenuW(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(file), L"&Outlook");
  AppendMenuW(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(items), L"&New");
  return menu;
}

std::optional<outlook::ItemType> newItemOf(int command) {
  const int type = command - static_cast<int>(HandCommand::NewItem);
  if (type < 0 || type >= static_cast<int>(std::size(Items))) return std::nullopt;
  return static_cast<outlook::ItemType>(type);
}

}  // namespace standin
