#include "simulator/client/Telephone.h"

#include <algorithm>

namespace simulator {

void Telephone::setLines(const std::vector<std::int32_t>& ids) {
  lines_.clear();
  for (const std::int32_t id : ids) lines_.push_back({id, State::Idle, {}});
}

std::vector<std::int32_t> Telephone::lines() const {
  std::vector<std::int32_t> ids;
  ids.reserve(lines_.size());
  for (const Line& line : lines_) ids.push_back(line.id);
  return ids;
}

void Telephone::forceState(std::int32_t line, std::optional<std::int32_t> state) {
  if (state) {
    forced_[line] = *state;
  } else {
    forced_.erase(line);
  }
}

std::int32_t Telephone::stateOf(std::int32_t line) const {
  if (const auto forced = forced_.find(line); forced != forced_.end()) return forced->second;
  const Line* found = find(line);
  return found ? static_cast<std::int32_t>(found->state) : 0;
}

std::int32_t Telephone::currentState() const {
  return forcedCurrent_ ? *forcedCurrent_ : stateOf(currentLine());
}

Telephone::State Telephone::state() const {
  const Line* line = find(currentLine());
  return line ? line->state : State::Idle;
}

std::u16string_view Telephone::number() const {
  const Line* line = find(currentLine());
  return line ? std::u16string_view(line->number) : std::u16string_view();
}

std::int32_t Telephone::currentLine() const {
  const Line* latest = find(current_);
  if (latest && latest->state != State::Idle) return current_;
  for (const Line& line : lines_) {
    if (line.state != State::Idle) return line.id;
  }
  return lines_.empty() ? 0 : lines_.front().id;
}

bool Telephone::ring(std::u16string_view number) {
  Line* line = firstIdle(0);
  if (line) begin(*line, State::Signalling, number);
  return line != nullptr;
}

bool Telephone::connect() {
  Line* line = find(currentLine());
  if (!line || (line->state != State::Signalling && line->state != State::Dialling)) return false;
  line->state = State::Connected;
  return true;
}

bool Telephone::end() {
  return hangUp(0);
}

void Telephone::dial(std::int32_t firstLine, std::int32_t chosenLine, std::u16string_view number) {
  Line* line = find(chosenLine);
  if (!line) line = firstIdle(firstLine);
  if (!line) line = find(currentLine());
  // Without a number the client only takes notice.
  if (line && !number.empty()) begin(*line, State::Dialling, number);
}

bool Telephone::pickUp(std::int32_t id) {
  const auto signals = [id](const Line& line) {
    return line.state == State::Signalling && (id == 0 || line.id == id);
  };
  const auto found = std::ranges::find_if(lines_, signals);
  if (found == lines_.end()) return false;
  found->state = State::Connected;
  current_ = found->id;
  return true;
}

bool Telephone::hangUp(std::int32_t id) {
  Line* line = find(id ? id : currentLine());
  if (!line || line->state == State::Idle) return false;
  line->state = State::Idle;
  line->number.clear();
  return true;
}

void Telephone::endAll() {
  for (Line& line : lines_) {
    line.state = State::Idle;
    line.number.clear();
  }
}

Telephone::Line* Telephone::find(std::int32_t id) {
  const auto found = std::ranges::find(lines_, id, &Line::id);
  return found == lines_.end() ? nullptr : &*found;
}

const Telephone::Line* Telephone::find(std::int32_t id) const {
  return const_cast<Telephone*>(this)->find(id);
}

Telephone::Line* Telephone::firstIdle(std::int32_t from) {
  auto start = std::ranges::find(lines_, from, &Line::id);
  if (start == lines_.end()) start = lines_.begin();
  const auto idle = [](const Line& line) { return line.state == State::Idle; };
  auto found = std::find_if(start, lines_.end(), idle);
  if (found == lines_.end()) found = std::find_if(lines_.begin(), lines_.end(), idle);
  return found == lines_.end() ? nullptr : &*found;
}

void Telephone::begin(Line& line, State state, std::u16string_view number) {
  line.state = state;
  line.number = number;
  current_ = line.id;
}

}  // namespace simulator
