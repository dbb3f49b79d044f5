// The documents of a resource map in its archive. Any archive is accepted: what it claims is not believed.
#pragma once

#include "framework/CString.h"
#include "host/cmUnZip.h"

#include <string>

constexpr char map_headers_folder[] = "headers";  // one document per header group
constexpr char map_modules_folder[] = "res";      // one document per module
constexpr char map_document_extension[] = ".xml";

// Walks over the documents of one kind.
class mrMapArchive {
public:
  // False when there is no archive there.
  bool open(const CString& path);
  // Starts over: with the documents of header groups, or with those of modules.
  void rewind(bool headers);

  enum Result { archiveDocument, archiveEnd, archiveDamaged };
  // The next document, in the archive's order: its name without folder and extension, and its bytes.
  Result next(CString& name, std::string& document);

private:
  int go_on();
  Result read(std::string& document);

  cmUnZip m_zip;
  bool m_headers = true;   // which documents are walked over
  bool m_started = false;  // whether an entry is the current one
  uint64_t m_read = 0;     // bytes of documents read so far
};

// "headers/a.xml" is "a".
CString mr_document_name(const CString& file);
