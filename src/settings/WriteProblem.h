#pragma once

// Why the settings could not be written, in the terms the status line uses.
enum class WriteProblem { diskFull, noPermission, diskError, locked, unknown };
