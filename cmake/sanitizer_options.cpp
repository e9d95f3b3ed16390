// Runtime options of the sanitizers, built into every program of a
// sanitizer build so that tests, the host and fuzzers behave alike however
// they are started (the environment's ASAN_OPTIONS and UBSAN_OPTIONS still win).

#define ZELVANE_SANITIZER_HOOK extern "C" __attribute__((visibility("default"), used))

ZELVANE_SANITIZER_HOOK const char* __asan_default_options()
{
    return "detect_leaks=1:print_suppressions=0:detect_stack_use_after_return=1:check_initialization_order=1";
}

ZELVANE_SANITIZER_HOOK const char* __ubsan_default_options()
{
    return "halt_on_error=1:print_stacktrace=1";
}

// Qt 5's offscreen platform (the tests' and headless runs') never deletes its
// screen, D-Bus, which Qt's X platform starts, keeps a buffer to the end, and
// fontconfig keeps its configuration while an application lives (the command
// fuzzer's lives to the end of the process);
// Qt's libraries have no frame pointers, so those allocations show only their
// first frame. Leaks of ours show our own frames and stay reported.
ZELVANE_SANITIZER_HOOK const char* __lsan_default_suppressions()
{
    return "leak:libqoffscreen.so\n"
           "leak:QScreen::QScreen\n"
           "leak:QPlatformScreen::QPlatformScreen\n"
           "leak:QWindowSystemInterface::handleScreenAdded\n"
           "leak:QtSharedPointer::ExternalRefCountData::getAndRef\n"
           "leak:QObject::QObject\n"
           "leak:libdbus-1.so\n"
           "leak:libfontconfig.so\n";
}
