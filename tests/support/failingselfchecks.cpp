// The self-checks of a start, each of which can be made to fail from outside. The linker puts these
// functions in the place of the program's (see --wrap in CMakeLists.txt), so the program itself knows
// nothing of them.
//
// With SCRIPTED_FAILING_CHECK in the environment each check announces itself on standard output, and
// the one that is named there fails.

#include "base/fatalassertion.h"
#include "base/standardoutput.h"

#include <QString>

namespace
{
bool fails(const char* check)
{
    if (!qEnvironmentVariableIsSet("SCRIPTED_FAILING_CHECK")) {
        return false;
    }
    printLine(QStringLiteral("CHECKING ") + QString::fromLatin1(check));
    return qgetenv("SCRIPTED_FAILING_CHECK") == check;
}

void check(const char* name, void (*original)())
{
    if (fails(name)) {
        FatalAssertion::fail(name, "/src/support/failingselfchecks.cpp", __LINE__);
    }
    original();
}
} // namespace

extern "C" {
// The members' names as mangled by the compiler.
bool __real__ZN18HEXGeneratorParser10HexUtility21machineIsLittleEndianEv();
void __real__ZN18HEXGeneratorParser10WriteToHEX8runTestsEv();
void __real__ZN18HEXGeneratorParser9HEXBuffer8runTestsEv();
void __real__ZN18HEXGeneratorParser10HexUtility8runTestsEv();
void __real__ZN13VersionString8runTestsEv();

bool __wrap__ZN18HEXGeneratorParser10HexUtility21machineIsLittleEndianEv()
{
    return !fails("byte order")
           && __real__ZN18HEXGeneratorParser10HexUtility21machineIsLittleEndianEv();
}

void __wrap__ZN18HEXGeneratorParser10WriteToHEX8runTestsEv()
{
    check("image writer", __real__ZN18HEXGeneratorParser10WriteToHEX8runTestsEv);
}

void __wrap__ZN18HEXGeneratorParser9HEXBuffer8runTestsEv()
{
    check("bit buffer", __real__ZN18HEXGeneratorParser9HEXBuffer8runTestsEv);
}

void __wrap__ZN18HEXGeneratorParser10HexUtility8runTestsEv()
{
    check("image helpers", __real__ZN18HEXGeneratorParser10HexUtility8runTestsEv);
}

void __wrap__ZN13VersionString8runTestsEv()
{
    check("version strings", __real__ZN13VersionString8runTestsEv);
}
}
