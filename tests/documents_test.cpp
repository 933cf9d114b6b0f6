// Documents that speak of the add-in's texts, members and manners, held against where these stand.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <regex>
#include <set>

#include "demo/NativeAddin.h"
#include "resources/strings.h"
#include "simulator/data/MailboxReader.h"
#include "simulator/data/Utf8.h"
#include "simulator/player/NativeStage.h"
#include "simulator/player/Player.h"

namespace tests {
namespace {

using Strings = std::vector<std::string>;

std::string fileOf(const std::string& name) {
  return simulator::readWholeFile(PROJECT_DIR "/" + name).value();
}

Strings split(const std::string& text, const std::string& separator) {
  Strings parts;
  for (std::size_t at = 0;;) {
    const auto end = text.find(separator, at);
    parts.push_back(text.substr(at, end - at));
    if (end == std::string::npos) return parts;
    at = end + separator.size();
  }
}

std::string trimmed(const std::string& text) {
  const auto begin = text.find_first_not_of(" \n");
  if (begin == std::string::npos) return {};
  return text.substr(begin, text.find_last_not_of(" \n") - begin + 1);
}

/// Matches of an expression's groups, all of them.
std::vector<Strings> findAll(const std::string& text, const std::string& expression) {
  std::vector<Strings> all;
  const std::regex regex(expression);
  for (std::sregex_iterator at(text.begin(), text.end(), regex), end; at != end; ++at)
    all.emplace_back(at->begin(), at->end());
  return all;
}

/// A row of a page's tables: the heading above it, and its cells without the marks of code.
struct PageRow {
  std::string heading;
  Strings cells;
};

std::vector<PageRow> rowsOf(const std::string& page) {
  std::vector<PageRow> rows;
  std::string heading;
  for (const auto& line : split(fileOf(page), "\n")) {
    if (line.starts_with('#')) heading = line.substr(line.find(' ') + 1);
    if (!line.starts_with("| ")) continue;
    PageRow row{heading, split(line.substr(2, line.rfind(" |") - 2), " | ")};
    for (auto& cell : row.cells) {
      if (cell.starts_with('`') && cell.find('`', 1) == cell.size() - 1)
        cell = cell.substr(1, cell.size() - 2);
    }
    rows.push_back(row);
  }
  return rows;
}

// ---- The trace

std::vector<PageRow> traceRows() {
  auto rows = rowsOf("docs/trace.md");
  std::erase_if(rows, [](const PageRow& row) { return row.cells[0] == "text"; });
  return rows;
}

/// The literals in what is handed to a writer of the trace, in the source that follows its opening
/// bracket: up to the end of the call, or to the operation that is guarded.
Strings literalsOfCall(const std::string& source, std::size_t at) {
  Strings literals;
  bool adjacent = false;
  for (int depth = 1; depth > 0 && source[at] != '{'; ++at) {
    if (source[at] == '"') {
      std::string text;
      for (++at; source[at] != '"'; ++at) {
        if (source[at] == '\\') ++at;
        text.push_back(source[at]);
      }
      if (adjacent) text.insert(0, literals.back()), literals.pop_back();
      literals.push_back(text);
      adjacent = true;
    } else if (!std::isspace(static_cast<unsigned char>(source[at])) && source[at] != 'u') {
      depth += source[at] == '(' ? 1 : source[at] == ')' ? -1 : 0;
      adjacent = false;
    }
  }
  return literals;
}

std::set<std::string> tracedLiterals() {
  std::set<std::string> literals;
  const std::regex writer(
      R"(\b(Log(Error|Warning|Debug2?)|trapAndLog|readAndLog|log|writer|[pP]honeCommandFor)\()");
  for (const char* folder :
       {"addin", "client", "explorer", "infra", "inspector", "items", "ribbon", "state"}) {
    for (const auto& entry :
         std::filesystem::directory_iterator(PROJECT_DIR "/" + std::string(folder))) {
      if (entry.path().extension() != ".cpp") continue;
      const auto source = simulator::readWholeFile(entry.path()).value();
      for (std::sregex_iterator at(source.begin(), source.end(), writer), end; at != end; ++at) {
        const auto behind = static_cast<std::size_t>(at->position() + at->length());
        for (const auto& text : literalsOfCall(source, behind)) literals.insert(text);
      }
    }
  }
  // What the user is told is traced as well.
  for (const int id : {102, 103, 104})
    literals.insert(simulator::toUtf8(resources::string(5000 + id).value()));
  return literals;
}

/// Whether a text is made of these literals and nothing else; blanks at its end do not count.
bool madeOf(const std::string& text, const std::set<std::string>& literals) {
  std::vector<bool> reached(text.size() + 1);
  reached[0] = true;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (!reached[at]) continue;
    for (const auto& literal : literals) {
      const auto rest = text.substr(at);
      if (!literal.empty() && rest.starts_with(literal)) reached[at + literal.size()] = true;
      if (!rest.empty() && trimmed(literal) == trimmed(rest)) return true;
    }
  }
  return reached[text.size()];
}

TEST(TracePage, HasEveryTextOfTheSourcesAndNoOther) {
  const auto literals = tracedLiterals();
  EXPECT_GT(literals.size(), 100U);
  std::string spans;
  for (const auto& row : traceRows()) {
    ASSERT_EQ(row.cells.size(), 5U) << row.cells[0];
    for (const auto& cell : row.cells) EXPECT_FALSE(cell.empty()) << row.cells[0];
    spans += row.cells[0] + "\n" + row.cells[1] + "\n";
    for (const auto& piece : split(row.cells[0], "*"))
      EXPECT_TRUE(madeOf(piece, literals)) << "no source traces this: " << row.cells[0];
  }
  for (const auto& literal : literals)
    EXPECT_NE(spans.find(trimmed(literal)), std::string::npos) << "not on the page: " << literal;
}

/// Every line that the samples trace has its row, with its level, and only rows that say so hold
/// something of the mailbox.
TEST(TracePage, KnowsWhatTheSamplesTraceAndWhatIsPersonalInIt) {
  struct Pattern {
    std::string level, personal;
    std::size_t fixed;
    std::regex text;
  };
  std::vector<Pattern> patterns;
  for (const auto& row : traceRows()) {
    auto text = std::regex_replace(row.cells[0], std::regex(R"([.+?()\[\]{}|^$\\])"), R"(\$&)");
    text = std::regex_replace(text, std::regex(R"(\*)"), ".*") + " *";
    const auto level = row.heading.substr(0, row.heading.find_first_of("s:"));
    patterns.push_back({level, row.cells[4], row.cells[0].size(), std::regex(text)});
  }
  // The longest text that fits is meant: some begin like others.
  std::ranges::sort(patterns, std::greater(), &Pattern::fixed);

  const auto mailbox = fileOf("samples/mailbox.json");
  std::set<std::string> personal;
  for (const auto& value : findAll(mailbox, R"re("([^"\\]{6,})"[,\]}\n])re"))
    personal.insert(value[1]);
  // Plain words, names of kinds and programs, tell nothing of anybody.
  std::erase_if(personal, [](const std::string& value) {
    return value.find_first_of(" ,@0123456789") == std::string::npos;
  });
  EXPECT_GT(personal.size(), 60U);

  for (const auto& entry : std::filesystem::directory_iterator(PROJECT_DIR "/samples")) {
    if (entry.path().extension() != ".scn") continue;
    scenario::NativeStage stage(simulator::readMailbox(mailbox, "mailbox"), makeNativeAddin);
    std::set<std::string> lines;
    scenario::Player player(stage, [&](std::string_view line) {
      if (line.starts_with("    ~ ")) lines.insert(std::string(line.substr(19)));
    });
    player.transcript().traceShown = true;
    scenario::TextSource source(simulator::readWholeFile(entry.path()).value(), "sample");
    player.play(source);
    EXPECT_FALSE(lines.empty()) << entry.path();
    for (const auto& line : lines) {
      const auto level = line.substr(0, line.find(':'));
      const auto text = trimmed(line.substr(9));
      const auto row = std::ranges::find_if(patterns, [&](const Pattern& pattern) {
        // A message is in the user's language, on the page in English.
        return level == pattern.level && std::regex_match(text, pattern.text);
      });
      if (row == patterns.end()) {
        EXPECT_TRUE(text.starts_with("Timeout beim Warten")) << entry.path() << ": " << line;
      } else if (row->personal == "no") {
        for (const auto& value : personal)
          EXPECT_EQ(line.find(value), std::string::npos) << "holds " << value << ": " << line;
      }
    }
  }
}

// ---- The interfaces

std::string typeName(const std::string& type) {
  static const std::map<std::string, std::string> names{
      {"long", "Long"},       {"short", "Integer"},        {"BSTR", "String"},
      {"VARIANT", "Variant"}, {"VARIANT_BOOL", "Boolean"}, {"IDispatch", "Object"}};
  return names.at(type);
}

struct Member {
  std::string interface, name, signature, result, id, help;
  int place;
};

std::vector<Member> membersOf(const std::string& idl) {
  std::vector<Member> members;
  for (const auto& part : split(fileOf(idl), "\n  interface _")) {
    int place = 0;
    const auto interface = part.substr(0, part.find(' '));
    for (const auto& m : findAll(part, R"(\[(id\((\w+)\)[^\]]*)\]\s*HRESULT (\w+)\(([^;]*)\);)")) {
      std::string arguments;
      std::string result = "-";
      for (const auto& a : findAll(m[4], R"(\[([^\]]*)\]\s*(\w+)[\s*]+(\w+))")) {
        if (a[1].find("retval") != std::string::npos) {
          result = typeName(a[2]);
          continue;
        }
        auto text = typeName(a[2]) + " " + a[3];
        if (a[1].find("out") != std::string::npos) text.insert(0, "ByRef ");
        if (a[1].find("optional") != std::string::npos) text = "[" + text + "]";
        arguments += (arguments.empty() ? "" : ", ") + text;
      }
      const bool get = m[1].find("propget") != std::string::npos;
      const bool put = m[1].find("propput") != std::string::npos;
      const auto help = findAll(m[1], R"re(helpstring\("(.*)"\))re");
      members.push_back({interface, m[3],
                         (get   ? "get "
                          : put ? "set "
                                : "") +
                             m[3] + "(" + arguments + ")",
                         result, m[2], help.empty() ? "" : help[0][1], ++place});
    }
  }
  return members;
}

/// The page's rows under a heading, their first cells joined; the heads of the tables left out.
Strings pageRows(const std::string& heading, std::size_t cells) {
  Strings lines;
  for (const auto& row : rowsOf("docs/interfaces.md")) {
    if (row.heading != heading) continue;
    std::string line;
    for (std::size_t i = 0; i < cells; ++i) line += row.cells.at(i) + " | ";
    lines.push_back(line);
  }
  if (!lines.empty()) lines.erase(lines.begin());
  return lines;
}

TEST(InterfacesPage, HasTheMembersOfTheClientWhereTheyAreLookedFor) {
  std::map<std::string, std::string> places;  // empty for those looked for by name
  for (const auto& m : findAll(fileOf("platform/velnor.h"),
                               R"re((?:get|call)\((?:\{u"(\w+)", (\d+)\}|u"(\w+)"))re"))
    places[m[1] + m[3]] = m[2];
  EXPECT_EQ(places.size(), 17U);
  std::map<std::string, Strings> expected;
  for (const auto& member : membersOf("standin/client/VelnorStandin.idl")) {
    if (member.name.starts_with("Reserved")) continue;
    ASSERT_TRUE(places.contains(member.name)) << member.name << " is asked for by nobody";
    const auto place = std::to_string(member.place);
    const auto& asked = places[member.name];
    EXPECT_TRUE(asked.empty() || asked == place) << member.name;
    expected[member.interface].push_back(place + " | " + member.signature + " | " + member.result +
                                         " | " + (asked.empty() ? "name" : "place") + " | ");
  }
  EXPECT_EQ(expected.size(), 4U);
  for (const auto& [interface, rows] : expected) EXPECT_EQ(pageRows(interface, 4), rows);
}

TEST(InterfacesPage, HasTheAddinsOwnMembersAndEachHasItsHelp) {
  std::map<std::string, Strings> expected;
  for (const auto& m : membersOf("windows/server/VelnorOutlookCOMAddIn.idl")) {
    EXPECT_FALSE(m.help.empty()) << m.interface << "." << m.name;
    expected["_" + m.interface].push_back(m.id + " | " + m.signature + " | " + m.result + " | " +
                                          m.help + " | ");
  }
  EXPECT_EQ(expected.size(), 6U);
  for (const auto& [interface, rows] : expected) EXPECT_EQ(pageRows(interface, 4), rows);
}

TEST(InterfacesPage, HasTheBitsOfALineStateAndTheExportsOfTheLibraries) {
  Strings bits;
  for (const auto& m :
       findAll(fileOf("platform/velnor.h"), R"(constexpr std::int32_t (\w+) = ([\d| ]+);)")) {
    if (m[1] != "StopWithHost")
      bits.push_back(m[1] + " | " + std::regex_replace(m[2], std::regex("\\|"), "+") + " | ");
  }
  EXPECT_EQ(pageRows("Line state", 2), bits);

  const auto exports = [](const std::string& file) {
    Strings names;
    for (const auto& m : findAll(fileOf(file), R"re(\n  "?([\w@]+)"? = )re"))
      names.push_back(m[1] + " | ");
    return names;
  };
  const auto helper = exports("standin/libraries/cxmapihlp.def");
  EXPECT_EQ(pageRows("The MAPI helper", 1), helper);
  EXPECT_EQ(pageRows("The logging library", 1), exports("standin/libraries/K9tLogVB.def"));
  // Each name tells the size of its arguments.
  for (const auto& row : pageRows("The MAPI helper", 2)) {
    const auto parts = split(row, " | ");
    const auto count = parts[1] == "-" ? 0 : std::ranges::count(parts[1], ',') + 1;
    EXPECT_EQ(std::stoi(parts[0].substr(parts[0].find('@') + 1)), 4 * count) << row;
  }
}

// ---- For users

/// The comments that tie a page's blocks to lines of samples, in order. Each block has one.
Strings proofsOf(const std::string& page) {
  Strings proofs;
  std::string unproven;
  for (const auto& block : split(fileOf(page), "\n\n")) {
    if (block.starts_with("<!--")) {
      EXPECT_FALSE(unproven.empty()) << page << ": a comment without its text: " << block;
      unproven.clear();
      proofs.push_back(trimmed(block));
    } else if (!block.starts_with('#') && !block.starts_with("![")) {
      EXPECT_EQ(unproven, "") << page << ": no sample shows this";
      unproven = block;
    }
  }
  EXPECT_EQ(unproven, "") << page << ": no sample shows this";
  return proofs;
}

TEST(UsersPages, SayOnlyWhatSamplesShow) {
  const auto proofs = proofsOf("docs/users.md");
  EXPECT_EQ(proofsOf("docs/users.de.md"), proofs);
  int shown = 0;
  for (const auto& proof : proofs) {
    if (proof == "<!-- Outlook's own -->") continue;
    const auto lines = findAll(proof, R"(\n([a-z-]+): ([^\n]+))");
    EXPECT_FALSE(lines.empty()) << proof;
    for (const auto& line : lines) {
      const auto sample = simulator::readWholeFile(PROJECT_DIR "/samples/" + line[1] + ".scn");
      ASSERT_TRUE(sample) << line[1];
      EXPECT_NE(("\n" + *sample).find("\n" + line[2] + "\n"), std::string::npos)
          << line[1] << " does not say: " << line[2];
      ++shown;
    }
  }
  EXPECT_GT(shown, 30);
}

// ---- All of them

TEST(Documents, LinkToWhatIsThere) {
  std::vector<std::filesystem::path> pages{PROJECT_DIR "/README.md",
                                           PROJECT_DIR "/CONTRIBUTING.md"};
  for (const auto& entry : std::filesystem::directory_iterator(PROJECT_DIR "/docs")) {
    if (entry.path().extension() == ".md") pages.push_back(entry.path());
  }
  EXPECT_GT(pages.size(), 9U);
  for (const auto& page : pages) {
    for (const auto& link :
         findAll(simulator::readWholeFile(page.string()).value(), R"(\]\(([^)#:]+)\))"))
      EXPECT_TRUE(std::filesystem::exists(page.parent_path() / link[1])) << page << ": " << link[1];
  }
}

}  // namespace
}  // namespace tests
