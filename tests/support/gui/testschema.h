#pragma once

#include <QByteArray>

#include <memory>

namespace HParser
{
class Generator;
}

/// Small settings headers for tests: every kind of setting, basic and advanced ones, and formulas.
namespace TestSchema
{
/// Global settings; "Alpha Cell" with advanced settings and formulas; "Plain Cell" without.
QByteArray text();

/// Only global settings and "Alpha Cell".
QByteArray singleChemistry();

/// Parses a header text.
std::unique_ptr<HParser::Generator> parse(const QByteArray& headerText);
} // namespace TestSchema
