#pragma once

namespace rose {

/// Begins the package of an "(object Class_Category": nested in the current one if that is open, beside it if it is
/// closed, below the logical view if there is none. Categories before the logical view, and use-case views with
/// everything in them, are skipped.
void CreatePackage(char* name);

/// The "logical_presentations" line: closes the current package, or, if it is closed, moves up to its parent and closes
/// that.
void ClosePackage();

} // namespace rose
