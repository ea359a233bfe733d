#pragma once

namespace karvel {

/// Where the library below a port does not do what the system does that it stands for. Wine is the
/// only such library: on Windows itself and on Linux nothing differs. A test that meets one of
/// these expects what is really there, and so speaks up when that changes.
enum class Difference {
  // Wine's profile functions keep a file as a list of sections and keys in memory, and write all of
  // it anew: a name without "=" is a key with no value, blanks around names and values and empty
  // lines go, and the last line gets its end. Windows changes the one line in the file's text.
  kLineWithoutEqualsIsAKey,
  kProfileWriteNormalizesLines,
  // Wine enforces locks on a part of a file against other locks, not against reading.
  kLockOnPartOfAFileDoesNotHinderReading,
};

bool differsHere(Difference difference);

}  // namespace karvel
