#pragma once

namespace CurrentThread {

/// The system's number for the calling thread, as the window shows it in its
/// per-thread table: unique among the threads that live at the same time.
int id();

} // namespace CurrentThread
