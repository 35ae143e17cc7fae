#pragma once

/// Ends the process like a crash, without a core dump, a report or a dialog.
[[noreturn]] void crash();
