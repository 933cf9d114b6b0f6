#pragma once

namespace windows {

/// Gives back what the compiler's run-time library keeps until the end of its process: the
/// semaphores of its locks, its slot among the about a thousand that the threads of a process have
/// for data of their own, and a reserve of memory for exceptions. For the moment when the DLL
/// leaves a process that goes on: nothing may be thrown any more, and no two threads may meet.
void releaseRuntimeLibrary() noexcept;

}  // namespace windows
