// Read by the leak checker of sanitizer builds. We cannot fix leaks of the platform's font, input
// and window libraries; no leak of ours may be listed here.

extern "C" const char* __lsan_default_suppressions();

extern "C" const char* __lsan_default_suppressions()
{
    return "leak:libfontconfig\n"
           "leak:libQt5XcbQpa\n"
           "leak:libQt5DBus\n"
           "leak:libqoffscreen\n";
}
