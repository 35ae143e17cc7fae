#pragma once

/// Ends the process as a crash does, without a core dump, a report or a question.
[[noreturn]] void crash();
