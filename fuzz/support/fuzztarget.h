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

/// What every fuzz target defines: takes one input in, ends the process when it finds something.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

/// Ends the process, as a finding, unless the condition holds.
#define FUZZ_EXPECT(condition)                                                                     \
    ((condition) ? static_cast<void>(0) : FuzzTarget::report(#condition, __FILE__, __LINE__))

/// What the fuzz targets share.
namespace FuzzTarget
{
/// Prints what did not hold and ends the process.
[[noreturn]] void report(const char* condition, const char* file, int line);

/// Runs `job`. False when it ended with a fatal assertion, the stated end of what a malformed
/// installed file brings: here it leaves the job by an exception in place of the process.
/// Everywhere outside such a job a fatal assertion is a finding.
bool runsToItsEnd(const std::function<void()>& job);

QByteArray bytesOf(const std::uint8_t* data, std::size_t size);

/// The path of a file in a folder that goes away with the process.
QString scratchPath(const QString& name);

/// The whole content of a file.
QByteArray contentOf(const QString& path);

/// Writes the file of that name in the scratch folder and returns its path.
QString scratchFile(const QString& name, const QByteArray& content);

/// The demo's schema, parsed once.
HParser::Generator& demoSchema();
} // namespace FuzzTarget
