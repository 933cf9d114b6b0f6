#pragma once

namespace platform {

class Clock;
class Files;
class Language;
class LoggingLibrary;
class MapiHelper;
class Objects;
class Pictures;
class Processes;
class Registry;
class Screen;
class Timers;

/// The services of the machine that the logic runs on. The program that owns the services hands
/// this over at its start and keeps them alive until the logic is gone.
struct Platform {
  Clock& clock;
  Files& files;
  Language& language;
  LoggingLibrary& loggingLibrary;
  MapiHelper& mapiHelper;
  Objects& objects;
  Pictures& pictures;
  Processes& processes;
  Registry& registry;
  Screen& screen;
  Timers& timers;
};

}  // namespace platform
