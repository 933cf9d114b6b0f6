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

std::string name(const pugi::xml_node& node) {
  return node.name();
}

/// The parser takes an unescaped "&" or "<" in a value and characters that XML does not have.
void requireWellFormedText(const std::string& value) {
  constexpr std::string_view References[] = {"&amp;", "&lt;", "&gt;", "&quot;", "&apos;", "&#"};
  for (std::size_t i = 0; i < value.size(); ++i) {
    const auto c = static_cast<unsigned char>(value[i]);
    const auto rest = std::string_view(value).substr(i);
    const bool reference = std::ranges::any_of(
        References, [&](std::string_view each) { return rest.starts_with(each); });
    const bool control = c < 0x20 && c != '\t' && c != '\n' && c != '\r';
    if ((c == '&' && !reference) || c == '<' || control) {
      throw Problem("the markup is malformed: \"" + value + "\" is not escaped");
    }
  }
}

/// The element's attributes with their values as they are written.
void requireKnown(const pugi::xml_node& node) {
  const auto known = std::ranges::find_if(Elements, [&](const Element& each) {
    return each.name == node.name() && each.parent == node.parent().name();
  });
  if (known == std::end(Elements)) {
    throw Problem("unexpected element <" + name(node) + "> in <" + name(node.parent()) + ">");
  }
  std::set<std::string> seen;
  for (const auto& attribute : node.attributes()) {
    const std::string attributeName = attribute.name();
    if (known->attributes.find(" " + attributeName + " ") == std::string_view::npos) {
      throw Problem("<" + name(node) + "> has an unknown attribute \"" + attributeName + "\"");
    }
    if (!seen.insert(attributeName).second) {
      throw Problem("<" + name(node) + "> has \"" + attributeName + "\" twice");
    }
    requireWellFormedText(attribute.value());
  }
}

/// Everything below `parent` is an element that belongs there; comments are passed over.
void requireElements(const pugi::xml_node& parent) {
  for (const auto& node : parent.children()) {
    if (node.type() == pugi::node_comment || node.type() == pugi::node_pi ||
        node.type() == pugi::node_declaration) {
      continue;
    }
    if (node.type() != pugi::node_element) {
      throw Problem("unexpected text in <" + name(parent) + ">");
    }
    requireKnown(node);
    requireElements(node);
  }
}

pugi::xml_document parse(std::u16string_view markup, unsigned int flags) {
  if (markup.find(u'\0') != std::u16string_view::npos) {
    throw Problem("the markup is malformed: it holds a character 0");
  }
  pugi::xml_document document;
  const auto result = document.load_buffer(markup.data(), markup.size() * sizeof(char16_t), flags,
                                           pugi::encoding_utf16);
  if (!result) {
    throw Problem("the markup is malformed at character " +
                  std::to_string(result.offset / static_cast<std::ptrdiff_t>(sizeof(char16_t))) +
                  ": " + result.description());
  }
  return document;
}

/// Reads markup whose elements and attributes are known ones.
class Reader {
 public:
  explicit Reader(std::u16string_view ribbonId) : ribbonId_(ribbonId) {}

  RibbonView read(const pugi::xml_document& document) {
    const auto root = document.child("customUI");
    if (root.attribute("xmlns").value() != NameSpace) {
      throw Problem("the root is no customUI of Office 2007");
    }
    view_.onLoad = wide(root.attribute("onLoad").value());
    for (const auto& ribbon : root.children("ribbon")) {
      for (const auto& tabs : ribbon.children("tabs")) {
        for (const auto& tab : tabs.children("tab")) readTab(tab);
      }
      for (const auto& sets : ribbon.children("contextualTabs")) {
        for (const auto& set : sets.children("tabSet")) readTabSet(set);
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

  void readTab(const pugi::xml_node& tab) {
    const std::string builtIn = tab.attribute("idMso").value();
    std::string title = builtIn;
    if (builtIn.empty()) {
      ownId(tab);
      title = tab.attribute("label").value();
    } else if (!hasTab(builtIn)) {
      throw Problem("unknown tab \"" + builtIn + "\" in " + toUtf8(ribbonId_));
    }
    for (const auto& group : tab.children("group")) readGroup(group, wide(title));
  }

  void readGroup(const pugi::xml_node& group, std::u16string tab) {
    ownId(group);
    RibbonGroupView view{std::move(tab), wide(group.attribute("label").value()), {}};
    for (const auto& button : group.children("button")) {
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

  std::u16string_view ribbonId_;
  RibbonView view_;
  std::set<std::string> ids_;
};

}  // namespace

RibbonView readRibbon(std::u16string_view markup, std::u16string_view ribbonId) {
  if (markup.empty()) return {};
  try {
    // Values as they are written first, to see whether they are well formed.
    const auto written = parse(markup, pugi::parse_fragment | pugi::parse_comments);
    requireElements(written);
    const auto roots = written.children("customUI");
    if (std::distance(roots.begin(), roots.end()) != 1) throw Problem("there is no single root");
    return Reader(ribbonId).read(parse(markup, pugi::parse_default));
  } catch (const Problem& problem) {
    RibbonView none;
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
