#pragma once

/// The last thing that a program does.
namespace ProcessEnd {

/// What main() returns, once all is written and every object of its own destroyed. On
/// Windows it does not come back: a process that ends while its worker threads leave may
/// lose its exit status there, and nothing that is left needs an orderly end.
int withStatus(int exitStatus);

/// The same at once, when threads are left behind that go on with what destructors
/// would take away from them.
[[noreturn]] void atOnce(int exitStatus);

} // namespace ProcessEnd
