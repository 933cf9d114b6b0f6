#include "simulator/outlook/Ribbon.h"

#include <algorithm>
#include <array>
#include <set>
#include <stdexcept>

#include <pugixml.hpp>

#include "simulator/data/Utf8.h"

namespace simulator {
namespace {

using outlook::ObjectClass;

constexpr std::string_view NameSpace = "http://schemas.microsoft.com/office/2006/01/customui";

constexpr std::array<std::string_view, 14> Tabs = {
    "TabTask",      "TabContact",          "TabAppointment", "TabNewMailMessage", "TabReadMessage",
    "TabJournal",   "TabDistributionList", "TabInsert",      "TabFormatText",     "TabReviewWord",
    "TabDeveloper", "TabAddIns",           "TabOptions",     "TabScheduling"};
constexpr std::string_view TableTools = "TabSetTableTools";

class Problem : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

std::u16string wide(std::string_view text) {
  return fromUtf8(text).value_or(u"");
}

std::string name(const pugi::xml_node& node) {
  return node.name();
}

[[noreturn]] void unexpected(const pugi::xml_node& node) {
  throw Problem("unexpected element <" + name(node) + "> in <" + name(node.parent()) + ">");
}

class Reader {
 public:
  RibbonView read(const pugi::xml_node& root) {
    if (name(root) != "customUI" || root.attribute("xmlns").value() != NameSpace) {
      throw Problem("the root is no customUI of Office 2007");
    }
    view_.onLoad = wide(root.attribute("onLoad").value());
    for (const auto& ribbon : root.children()) {
      if (name(ribbon) != "ribbon") unexpected(ribbon);
      for (const auto& part : ribbon.children()) {
        if (name(part) == "tabs") {
          for (const auto& tab : part.children("tab")) readTab(tab);
        } else if (name(part) == "contextualTabs") {
          for (const auto& set : part.children("tabSet")) readTabSet(set);
        } else {
          unexpected(part);
        }
      }
    }
    return std::move(view_);
  }

 private:
  void readTab(const pugi::xml_node& tab) {
    const std::string builtIn = tab.attribute("idMso").value();
    std::string title = builtIn;
    if (builtIn.empty()) {
      ownId(tab);
      title = tab.attribute("label").value();
    } else if (std::ranges::find(Tabs, builtIn) == Tabs.end()) {
      throw Problem("unknown tab \"" + builtIn + "\"");
    }
    for (const auto& group : tab.children()) {
      if (name(group) != "group") unexpected(group);
      readGroup(group, wide(title));
    }
  }

  void readGroup(const pugi::xml_node& group, std::u16string tab) {
    ownId(group);
    RibbonGroupView view{std::move(tab), wide(group.attribute("label").value()), {}};
    for (const auto& button : group.children()) {
      if (name(button) != "button") unexpected(button);
      const auto id = wide(ownId(button));
      view.buttons.push_back({id, wide(button.attribute("label").value()), u""});
      view_.callbacks.push_back({id, wide(button.attribute("onAction").value()),
                                 wide(button.attribute("getImage").value())});
    }
    view_.groups.push_back(std::move(view));
  }

  void readTabSet(const pugi::xml_node& set) {
    const std::string id = set.attribute("idMso").value();
    if (id != TableTools) throw Problem("unknown tab set \"" + id + "\"");
    if (!set.attribute("visible").as_bool(true)) view_.hiddenTabSets.push_back(wide(id));
  }

  std::string ownId(const pugi::xml_node& node) {
    std::string id = node.attribute("id").value();
    if (id.empty()) throw Problem("<" + name(node) + "> has no id");
    if (!ids_.insert(id).second) throw Problem("the id \"" + id + "\" is there twice");
    return id;
  }

  RibbonView view_;
  std::set<std::string> ids_;
};

}  // namespace

RibbonView readRibbon(std::u16string_view markup) {
  if (markup.empty()) return {};
  pugi::xml_document document;
  const auto result = document.load_buffer(markup.data(), markup.size() * sizeof(char16_t),
                                           pugi::parse_default, pugi::encoding_utf16_le);
  RibbonView none;
  if (!result) {
    none.problems.push_back(wide("the markup is malformed at character " +
                                 std::to_string(result.offset) + ": " + result.description()));
    return none;
  }
  try {
    return Reader().read(document.document_element());
  } catch (const Problem& problem) {
    none.problems.push_back(wide(problem.what()));
    return none;
  }
}

std::u16string_view ribbonIdOf(ObjectClass kind, bool sent) {
  switch (kind) {
    case ObjectClass::Mail:
      return sent ? u"Microsoft.Outlook.Mail.Read" : u"Microsoft.Outlook.Mail.Compose";
    case ObjectClass::Post:
      return sent ? u"Microsoft.Outlook.Post.Read" : u"Microsoft.Outlook.Post.Compose";
    case ObjectClass::Appointment: return u"Microsoft.Outlook.Appointment";
    case ObjectClass::Contact: return u"Microsoft.Outlook.Contact";
    case ObjectClass::DistributionList: return u"Microsoft.Outlook.DistributionList";
    case ObjectClass::Journal: return u"Microsoft.Outlook.Journal";
    case ObjectClass::Task: return u"Microsoft.Outlook.Task";
    case ObjectClass::MeetingRequest:
    case ObjectClass::MeetingCancellation: return u"Microsoft.Outlook.MeetingRequest.Read";
    case ObjectClass::MeetingResponseNegative:
    case ObjectClass::MeetingResponsePositive:
    case ObjectClass::MeetingResponseTentative: return u"Microsoft.Outlook.Response.Read";
    default: return {};
  }
}

}  // namespace simulator
