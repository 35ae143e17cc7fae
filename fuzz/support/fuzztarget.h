#pragma once

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>

namespace HParser
{
class Generator;
}

/// Defined by every fuzz target: tests one input and ends the process if it finds a fault.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

/// Ends the process, as a finding, unless the condition holds.
#define FUZZ_EXPECT(condition)                                                                     \
    ((condition) ? static_cast<void>(0) : FuzzTarget::report(#condition, __FILE__, __LINE__))

/// Helpers for the fuzz targets.
namespace FuzzTarget
{
/// Prints the condition that failed and ends the process.
[[noreturn]] void report(const char* condition, const char* file, int line);

/// Runs `job`. Returns false if it ended with a fatal assertion, the expected result of a malformed
/// installed file: here an exception ends the job instead of the process. Outside such a job a
/// fatal assertion is a finding.
bool runsToItsEnd(const std::function<void()>& job);

QByteArray bytesOf(const std::uint8_t* data, std::size_t size);

/// Returns the path of a file in a folder that is deleted with the process.
QString scratchPath(const QString& name);

/// Returns the whole content of a file.
QByteArray contentOf(const QString& path);

/// Writes a file of this name in the scratch folder and returns its path.
QString scratchFile(const QString& name, const QByteArray& content);

/// Returns the demo's schema, parsed once.
HParser::Generator& demoSchema();
} // namespace FuzzTarget
