// Stands in for a function that a library imports, to see what the library does when the system fails.
#pragma once

// As long as the object lives, the library, which must be loaded, calls the replacement; no library is the
// program itself.
class ReplacedImport {
public:
  // Throws when the library does not import the function.
  ReplacedImport(const char* library, const char* function, void* replacement);
  ReplacedImport(const ReplacedImport&) = delete;
  ReplacedImport& operator=(const ReplacedImport&) = delete;
  ~ReplacedImport();

private:
  void** m_slot;  // in the library's table of imported addresses
  void* m_original;
};
