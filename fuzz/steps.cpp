// Runs the seeds through their targets, and inputs that grow: twice the input may take twice the
// steps, not more. Steps are counted, so that the answer is the same on every machine.
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "fuzz/counter.h"
#include "fuzz/targets.h"
#include "simulator/data/Utf8.h"

namespace {

/// An input of about this many bytes that is hard to read.
using Grow = std::function<std::string(std::size_t size)>;

std::string repeated(std::string_view part, std::size_t size) {
  std::string text;
  while (text.size() < size) text += part;
  return text;
}

struct Row {
  std::string_view target;
  const char* what;
  Grow grow;
};

const Row Rows[] = {
    {"caller-data", "pairs", [](auto n) { return repeated("1=a;", n); }},
    {"caller-data", "separators only", [](auto n) { return repeated("\r\n", n); }},
    {"caller-data", "no separator", [](auto n) { return repeated("20=1", n); }},
    {"subject", "marks", [](auto n) { return repeated("Tel.", n); }},
    {"subject", "nearly marks", [](auto n) { return repeated("Tel", n); }},
    {"subject", "ampersands", [](auto n) { return repeated(" & ", n); }},
    {"menus", "a long subject",
     [](auto n) { return std::string("\x01\x00", 2) + "Tel. " + repeated("1", n); }},
    {"references", "recipients",
     [](auto n) { return std::string("\x00", 1) + "me\xFF" + repeated("a@x\xFF", n); }},
    {"registry", "a long string", [](auto n) { return "\x01" + repeated("1", n); }},
    {"registry", "long bytes", [](auto n) { return "\x03" + repeated("1", n); }},
    {"mailbox", "notes",
     [](auto n) {
       return R"({"folders":[{"name":"F","holds":"note","items":[{"body":"1"})" +
              repeated(R"(,{"body":"1"})", n) + "]}]}";
     }},
    {"mailbox", "links",
     [](auto n) {
       return R"({"folders":[{"name":"F","holds":"task","items":[{"id":"a","links":["a")" +
              repeated(R"(,"a")", n) + "]}]}]}";
     }},
    {"mailbox", "brackets", [](auto n) { return repeated("[", n); }},
    {"vcard", "cards",
     [](auto n) { return repeated("BEGIN:VCARD\nVERSION:3.0\nFN:E\nTEL:1\nEND:VCARD\n", n); }},
    {"vcard", "folded lines",
     [](auto n) {
       return "BEGIN:VCARD\nVERSION:3.0\nFN:E" + repeated("\n x", n) + "\nEND:VCARD\n";
     }},
    {"vcard", "telephones",
     [](auto n) { return "BEGIN:VCARD\nFN:E" + repeated("\nTEL;CELL:1", n) + "\nEND:VCARD\n"; }},
    {"vcard", "agents", [](auto n) { return repeated("BEGIN:VCARD\nAGENT:\n", n); }},
    {"vcard", "a folded head",
     [](auto n) { return "BEGIN:VCARD\nFN;X=\"" + repeated("\n :", n) + "\nEND:VCARD\n"; }},
    {"vcard", "notes",
     [](auto n) {
       return "BEGIN:VCARD\nNOTE:" + std::string(n / 2, 'x') + repeated("\nNOTE:1", n / 2) +
              "\nEND:VCARD\n";
     }},
    {"vcard", "a telephone URI",
     [](auto n) { return "BEGIN:VCARD\nTEL:tel:" + repeated("%20%", n) + "\nEND:VCARD\n"; }},
    {"vcard", "stray lines", [](auto n) { return repeated("x\n", n); }},
    {"regfile", "values",
     [](auto n) {
       return "REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\a]\r\n" + repeated("\"a\"=\"1\"\r\n", n);
     }},
    {"regfile", "keys",
     [](auto n) { return "REGEDIT4\r\n\r\n" + repeated("[HKEY_CURRENT_USER\\a]\r\n", n); }},
    {"regfile", "bytes",
     [](auto n) {
       return "REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\a]\r\n\"a\"=hex:01" + repeated(",02", n) +
              "\r\n";
     }},
    {"regfile", "comments", [](auto n) { return "REGEDIT4\r\n" + repeated(";x\r\n", n); }},
    {"regfile", "brackets",
     [](auto n) { return "REGEDIT4\r\n[HKEY_CURRENT_USER\\" + repeated("]", n) + "\r\n"; }},
};

const fuzz::Target* find(std::string_view name) {
  const auto all = fuzz::targets();
  const auto found = std::ranges::find(all, name, &fuzz::Target::name);
  return found == all.end() ? nullptr : &*found;
}

void run(const fuzz::Target& target, const std::string& input) {
  target.run(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
}

std::uint64_t stepsOf(const fuzz::Target& target, const std::string& input) {
  const auto before = fuzz::stepsSoFar();
  run(target, input);
  return fuzz::stepsSoFar() - before;
}

/// Steps for a further byte at these sizes: the second may not be more, but for what a logarithm
/// gives and a buffer that happens to grow.
bool growsInLine(const Row& row) {
  constexpr std::size_t Size = 4'000;
  constexpr double Tolerance = 1.25;
  const auto& target = *find(row.target);
  double perByte[2];
  for (int i = 0; i < 2; ++i) {
    const std::size_t size = i == 0 ? Size : 8 * Size;
    const auto small = stepsOf(target, row.grow(size));
    const auto large = stepsOf(target, row.grow(2 * size));
    perByte[i] =
        (static_cast<double>(large) - static_cast<double>(small)) / static_cast<double>(size);
  }
  const bool inLine = perByte[1] <= Tolerance * perByte[0] + 1;
  std::printf("%-12s %-18s %8.1f %8.1f steps a byte%s\n", std::string(row.target).c_str(), row.what,
              perByte[0], perByte[1], inLine ? "" : "  GROWS FASTER THAN ITS INPUT");
  return inLine;
}

std::size_t runSeeds(const std::filesystem::path& folder) {
  std::size_t count = 0;
  for (const auto& target : fuzz::targets()) {
    for (const auto& file : std::filesystem::directory_iterator(folder / target.name)) {
      run(target, simulator::readWholeFile(file.path().string()).value());
      ++count;
    }
  }
  return count;
}

}  // namespace

int main() {
  const auto seeds = runSeeds(CXOL_SEEDS_DIR);
  const auto faults = std::ranges::count_if(Rows, [](const Row& row) { return !growsInLine(row); });
  std::printf("%zu seeds, %zu growing inputs, %td not in line\n", seeds, std::size(Rows), faults);
  return seeds != 0 && faults == 0 ? 0 : 1;
}
