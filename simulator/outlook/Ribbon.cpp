#include "simulator/outlook/Ribbon.h"

#include <algorithm>
#include <array>
#include <set>
#include <stdexcept>

#include "simulator/data/Utf8.h"
#include "simulator/outlook/Markup.h"

namespace simulator {
namespace {

using outlook::ObjectClass;

constexpr std::string_view NameSpace = "http://schemas.microsoft.com/office/2006/01/customui";
constexpr std::string_view TableTools = "TabSetTableTools";

/// Tabs of every inspector.
constexpr std::string_view CommonTabs[] = {"TabInsert", "TabFormatText", "TabReviewWord",
                                           "TabDeveloper", "TabAddIns"};
/// The tab of its own that an inspector has, by the end of its ribbon id.
constexpr std::array<std::pair<std::u16string_view, std::string_view>, 7> OwnTabs = {{
    {u".Contact", "TabContact"},
    {u".Task", "TabTask"},
    {u".Appointment", "TabAppointment"},
    {u".Journal", "TabJournal"},
    {u".DistributionList", "TabDistributionList"},
    {u".Compose", "TabNewMailMessage"},
    {u".Read", "TabReadMessage"},
}};

/// Elements that this Office understands, with the element around them and their attributes.
struct Element {
  std::string_view name;
  std::string_view parent;
  std::string_view attributes;
};
constexpr Element Elements[] = {
    {"customUI", "", " xmlns onLoad loadImage "},
    {"ribbon", "customUI", " startFromScratch "},
    {"tabs", "ribbon", " "},
    {"contextualTabs", "ribbon", " "},
    {"tab", "tabs", " id idMso label tag visible keytip insertBeforeMso insertAfterMso "},
    {"tabSet", "contextualTabs", " idMso visible "},
    {"group", "tab", " id label tag visible screentip supertip insertBeforeMso insertAfterMso "},
    {"button", "group",
     " id label tag visible enabled onAction getImage image imageMso size showLabel showImage "
     "screentip supertip description keytip "},
};

class Problem : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

std::u16string wide(std::string_view text) {
  return fromUtf8(text).value_or(u"");
}

/// The element and everything below it belong where they are, and so do their attributes.
void requireKnown(const MarkupElement& element, std::string_view parent) {
  const auto known = std::ranges::find_if(Elements, [&](const Element& each) {
    return each.name == element.name && each.parent == parent;
  });
  if (known == std::end(Elements)) {
    throw Problem("unexpected element <" + element.name + "> in <" + std::string(parent) + ">");
  }
  for (const auto& [name, value] : element.attributes) {
    if (known->attributes.find(" " + name + " ") == std::string_view::npos) {
      throw Problem("<" + element.name + "> has an unknown attribute \"" + name + "\"");
    }
  }
  if (element.holdsText) throw Problem("unexpected text in <" + element.name + ">");
  for (const MarkupElement& child : element.children) requireKnown(child, element.name);
}

/// False only for what says so: "0", "false", "no".
bool isFalse(std::string_view value) {
  constexpr std::string_view yes = "1tTyY";
  return !value.empty() && yes.find(value.front()) == std::string_view::npos;
}

/// Reads markup whose elements and attributes are known ones.
class MarkupReader {
 public:
  explicit MarkupReader(std::u16string_view ribbonId) : ribbonId_(ribbonId) {}

  /// The root has passed the test of its elements: each level has one kind of children or two.
  RibbonView read(const MarkupElement& root) {
    if (root.attribute("xmlns") != NameSpace) {
      throw Problem("the root is no customUI of Office 2007");
    }
    view_.onLoad = wide(root.attribute("onLoad"));
    for (const auto& ribbon : root.children) {
      for (const auto& tabs : ribbon.children) {
        const bool contextual = tabs.name == "contextualTabs";
        for (const auto& tab : tabs.children) contextual ? readTabSet(tab) : readTab(tab);
      }
    }
    return std::move(view_);
  }

 private:
  bool hasTab(std::string_view id) const {
    if (std::ranges::find(CommonTabs, id) != std::end(CommonTabs)) return true;
    return std::ranges::any_of(OwnTabs, [&](const auto& own) {
      return own.second == id && ribbonId_.ends_with(own.first);
    });
  }

  void readTab(const MarkupElement& tab) {
    const std::string builtIn(tab.attribute("idMso"));
    std::string title = builtIn;
    if (builtIn.empty()) {
      ownId(tab);
      title = tab.attribute("label");
    } else if (!hasTab(builtIn)) {
      throw Problem("unknown tab \"" + builtIn + "\" in " + toUtf8(ribbonId_));
    }
    for (const auto& group : tab.children) readGroup(group, wide(title));
  }

  void readGroup(const MarkupElement& group, std::u16string tab) {
    ownId(group);
    RibbonGroupView view{std::move(tab), wide(group.attribute("label")), {}};
    for (const auto& button : group.children) {
      const auto id = wide(ownId(button));
      ControlView& control = view.controls.emplace_back();
      control.tag = id;
      control.caption = wide(button.attribute("label"));
      control.style = office::ButtonStyle::Caption;
      view_.callbacks.push_back(
          {id, wide(button.attribute("onAction")), wide(button.attribute("getImage"))});
    }
    view_.groups.push_back(std::move(view));
  }

  void readTabSet(const MarkupElement& set) {
    const std::string id(set.attribute("idMso"));
    if (id != TableTools) throw Problem("unknown tab set \"" + id + "\"");
    if (isFalse(set.attribute("visible"))) view_.hiddenTabSets.push_back(wide(id));
  }

  std::string ownId(const MarkupElement& element) {
    std::string id(element.attribute("id"));
    if (id.empty()) throw Problem("<" + element.name + "> has no id");
    if (!ids_.insert(id).second) throw Problem("the id \"" + id + "\" is there twice");
    return id;
  }

  std::u16string_view ribbonId_;
  RibbonView view_;
  std::set<std::string> ids_;
};

}  // namespace

RibbonView readRibbon(std::u16string_view markup, std::u16string_view ribbonId) {
  if (markup.empty()) return {};
  RibbonView none;
  try {
    const MarkupElement root = readMarkup(markup);
    requireKnown(root, "");
    return MarkupReader(ribbonId).read(root);
  } catch (const MarkupError& error) {
    none.problems.push_back(u"the markup is malformed: " + wide(error.what()));
  } catch (const Problem& problem) {
    none.problems.push_back(wide(problem.what()));
  }
  return none;
}

}  // namespace simulator
