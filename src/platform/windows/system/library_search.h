#pragma once

namespace karvel {

/// Lets the libraries that are loaded from now on come from the system's folder alone, never from
/// the program's own, which may be a folder of downloads. Does nothing on a Windows 7 that lacks
/// the function. For the libraries that the program imports, the loader finds the same rule in the
/// program's file.
void confineLibrarySearch();

}  // namespace karvel
