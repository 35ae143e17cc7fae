#pragma once

class ComparisonTable;
class MainWindow;

/// The rows of the table, grouped by what they need.
namespace BenchmarkRows
{
/// A start and an idle minute, in separate processes. REQUIRES: the programs started_editor and
/// empty_window next to this one.
void addProcesses(ComparisonTable& table);
void addIdle(ComparisonTable& table);

/// Selecting, loading and deleting in the editor's visible window, on the demo installation.
void addWindow(ComparisonTable& table, MainWindow& window);

/// Schema, bundle, images and formulas.
void addCore(ComparisonTable& table);
} // namespace BenchmarkRows
