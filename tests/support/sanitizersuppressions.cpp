// Read by the leak checker of sanitizer builds. What is left behind by the platform's font, input
// and window libraries is not ours to mend; nothing of ours stands here.

extern "C" const char* __lsan_default_suppressions();

extern "C" const char* __lsan_default_suppressions()
{
    return "leak:libfontconfig\n"
           "leak:libQt5XcbQpa\n"
           "leak:libQt5DBus\n"
           "leak:libqoffscreen\n";
}
