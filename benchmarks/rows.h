#pragma once

class ComparisonTable;
class MainWindow;

/// The rows of the table, by what they need.
namespace BenchmarkRows
{
/// A start and a minute of idling, in processes of their own. REQUIRES: the programs
/// started_editor and empty_window beside this one.
void addProcesses(ComparisonTable& table);
void addIdle(ComparisonTable& table);

/// Selecting, loading and deleting in the editor's own window, shown, on the demo installation.
void addWindow(ComparisonTable& table, MainWindow& window);

/// Schema, bundle, images and formulas.
void addCore(ComparisonTable& table);
} // namespace BenchmarkRows
