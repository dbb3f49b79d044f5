// The documents of a resource map: written into two folders, packed into the archive, and read from either.
// Windows only.
#include "namer/mrIDNamer.h"

#include "host/cmZip.h"
#include "host/xcal.h"
#include "namer/mrFiles.h"
#include "namer/mrMapArchive.h"
#include "namer/mrXml.h"

#include <fstream>
#include <utility>
#include <vector>

namespace {

constexpr int zip_level = 7;
constexpr unsigned zip_chunk_size = 65000;  // bytes

constexpr HRESULT invalid_name = HRESULT_FROM_WIN32(ERROR_INVALID_NAME);

CString folder_of(const CString& path) {
  const size_t separator = path.str().find_last_of("\\/");
  return separator == std::string::npos ? CString() : CString(path.str().substr(0, separator));
}

// Whether XML has a way to write the name at all. Nothing else than a broken header, or a caller that
// declares controls, comes with one that it has not.
bool can_be_stored(const CString& name) {
  for (const char ch : name.str())
    if (static_cast<unsigned char>(ch) < ' ')
      return false;
  return true;
}

// The document of a group or module; empty when no file can have the name, or when it would lead out of the
// folder. Names come from archives and from callers, not only from the names of files.
CString document_path(const CString& folder, const CString& name) {
  if (name.str().find_first_of("\\/:*?\"<>|") != std::string::npos || !can_be_stored(name))
    return CString();
  return mrFiles::combine(folder, name + map_document_extension);
}

// Names of elements and attributes, made once per document and not once per element.
struct Words {
  const mrBstr name{L"name"}, value{L"value"};
  const mrBstr constants{L"constants"}, constant{L"constant"};
  const mrBstr library{L"library"}, headers{L"headers"}, header{L"header"};
  const mrBstr dialogs{L"dialogs"}, dialog{L"dialog"}, control{L"control"};
};

// Appends elements, one after the other, until one fails; then does nothing more.
class Writer {
public:
  Writer() : m_result(m_document.create()) {}

  mrComPtr<IXMLDOMElement> begin(const mrBstr& name) {
    mrComPtr<IXMLDOMElement> root;
    if (SUCCEEDED(m_result))
      m_result = m_document.begin(name, root);
    return root;
  }
  mrComPtr<IXMLDOMElement> append(const mrComPtr<IXMLDOMElement>& parent, const mrBstr& name) {
    mrComPtr<IXMLDOMElement> element;
    if (SUCCEEDED(m_result))
      m_result = m_document.append(parent.get(), name, element);
    return element;
  }
  void set(const mrComPtr<IXMLDOMElement>& element, const mrBstr& attribute, const CString& value) {
    if (SUCCEEDED(m_result))
      m_result = mr_set_attribute(element.get(), attribute, value);
  }
  HRESULT save(const CString& path) {
    if (SUCCEEDED(m_result))
      m_result = path.IsEmpty() ? invalid_name : m_document.save_file(path);
    return m_result;
  }

private:
  mrXmlDocument m_document;
  HRESULT m_result;
};

struct StoredDialog {
  CString name;
  std::vector<CString> controls;
};

// What the document of a module holds: names only.
struct StoredModule {
  std::vector<CString> headers;
  std::vector<StoredDialog> dialogs;
};

HRESULT read_module(const mrXmlDocument& document, StoredModule& module) {
  // From inDialog on a state is the number of a dialog: its controls belong to it.
  enum State : int { elsewhere, inLibrary, inHeaders, inDialogs, inDialog };
  const Words words;
  return document.walk([&](mrXmlElement& element, int parent) -> int {
    if (parent >= inDialog && element.is(L"control"))
      module.dialogs[static_cast<size_t>(parent - inDialog)].controls.push_back(
          element.attribute(words.name));
    if (parent == inHeaders && element.is(L"header"))
      module.headers.push_back(element.attribute(words.name));
    if (parent == inDialogs && element.is(L"dialog")) {
      module.dialogs.push_back({element.attribute(words.name), {}});
      return inDialog + static_cast<int>(module.dialogs.size()) - 1;
    }
    if (parent == inLibrary && element.is(L"headers"))
      return inHeaders;
    if (parent == inLibrary && element.is(L"dialogs"))
      return inDialogs;
    return element.is(L"library") ? inLibrary : elsewhere;
  });
}

// Sets a constant where it nearly always goes, since documents are in name order: at the end.
void set_last(mrNameMap<int64_t>& constants, CString name, int64_t value) {
  constants.insert_or_assign(constants.end(), std::move(name), value);
}

// What a document that is part of a map must give: S_FALSE, "not well-formed", is a failure there.
HRESULT required(HRESULT hr) { return hr == S_FALSE ? E_FAIL : hr; }

}  // namespace

// ---- saving
// ----------------------------------------------------------------------------------------------------

long mrIDNamer::save_res_map(const CString& path) {
  const mrComApartment com;
  if (FAILED(com.result()))
    return com.result();
  const CString headers = mrFiles::combine(folder_of(path), map_headers_folder);
  const CString modules = mrFiles::combine(folder_of(path), map_modules_folder);
  long result = save_headers(headers);
  if (SUCCEEDED(result))
    result = save_modules(modules);
  return SUCCEEDED(result) ? save_archive(path, headers, modules) : result;
}

long mrIDNamer::save_headers(const CString& folder) {
  const long made = mrFiles::create_folder(folder);
  if (FAILED(made))
    return made;
  for (const auto& [key, group] : m_headers) {
    const long result = save_header(*group, document_path(folder, key));
    if (FAILED(result))
      return result;
  }
  return S_OK;
}

long mrIDNamer::save_header(const mrHeader& group, const CString& path) {
  report_progress(path);
  const Words words;
  Writer writer;
  const mrComPtr<IXMLDOMElement> root = writer.begin(words.constants);
  for (const auto& [name, value] : group.constants) {
    if (!can_be_stored(name)) {
      CString text;
      text.Format("Header '%s': constant '%s' cannot be stored.", group.key.GetString(), name.GetString());
      error(text);
      continue;
    }
    const mrComPtr<IXMLDOMElement> constant = writer.append(root, words.constant);
    writer.set(constant, words.name, name);
    writer.set(constant, words.value, std::to_string(value));
  }
  return writer.save(path);
}

long mrIDNamer::save_modules(const CString& folder) {
  const long made = mrFiles::create_folder(folder);
  if (FAILED(made))
    return made;
  for (const auto& [name, module] : m_libraries) {
    const long result = save_module(*module, document_path(folder, name));
    if (FAILED(result))
      return result;
  }
  return S_OK;
}

long mrIDNamer::save_module(const mrLibraryRes& module, const CString& path) {
  report_progress(path);
  const Words words;
  Writer writer;
  const mrComPtr<IXMLDOMElement> root = writer.begin(words.library);
  const mrComPtr<IXMLDOMElement> headers = writer.append(root, words.headers);
  for (const auto& [key, group] : module.headers)
    writer.set(writer.append(headers, words.header), words.name, key);
  const mrComPtr<IXMLDOMElement> dialogs = writer.append(root, words.dialogs);
  for (const auto& [number, dialog] : module.dialogs) {
    CString text;
    if (!can_be_stored(dialog->name)) {
      text.Format("Library '%s': dialog '%s' cannot be stored.", module.name.GetString(),
                  dialog->name.GetString());
      error(text);
      continue;
    }
    const mrComPtr<IXMLDOMElement> element = writer.append(dialogs, words.dialog);
    writer.set(element, words.name, dialog->name);
    for (const auto& [id, name] : dialog->controls) {
      if (can_be_stored(name)) {
        writer.set(writer.append(element, words.control), words.name, name);
        continue;
      }
      text.Format("Library '%s', dialog '%s': control '%s' cannot be stored.", module.name.GetString(),
                  dialog->name.GetString(), name.GetString());
      error(text);
    }
  }
  return writer.save(path);
}

long mrIDNamer::save_archive(const CString& path, const CString& headers, const CString& modules) {
  mrFiles::remove(path);
  cmZip zip;
  int result = zip.open(path);
  if (result == 0)
    result = add_dir_to_zip(zip, headers, map_headers_folder);
  if (result == 0)
    result = add_dir_to_zip(zip, modules, map_modules_folder);
  const int closed = zip.close();
  return result == 0 && closed == 0 ? S_OK : E_FAIL;
}

int mrIDNamer::add_dir_to_zip(cmZip& zip, const CString& folder, const CString& folder_in_zip) {
  CArray<CString, const CString&> names;
  if (!mrFiles::list_files(folder, map_document_extension, names))
    return -1;
  for (const CString& name : names) {
    const int result = add_file_to_zip(zip, mrFiles::combine(folder, name), folder_in_zip);
    if (result != 0)
      return result;
  }
  return 0;
}

int mrIDNamer::add_file_to_zip(cmZip& zip, const CString& path, const CString& folder_in_zip) {
  std::ifstream in(path.GetString(), std::ios::binary);
  if (!in)
    return -1;
  int date[fcdate_fields];
  file_modified_date(path, date);
  const CString name = path.Mid(static_cast<int>(path.str().find_last_of("\\/") + 1));
  int result = zip.open_new_file_in_zip(folder_in_zip + "/" + name, zipDeflate, zip_level, date);
  if (result != 0)
    return result;
  result = zip.zip_current_file(in, zip_chunk_size);
  const int closed = zip.close_file_in_zip();
  return result != 0 ? result : closed;
}

void mrIDNamer::file_modified_date(const char* path, int* date) { fcdate(path, date); }

// ---- loading
// ---------------------------------------------------------------------------------------------------

long mrIDNamer::load_res_map(const CString& path) {
  const mrComApartment com;
  if (FAILED(com.result()))
    return com.result();
  const CString headers = mrFiles::combine(folder_of(path), map_headers_folder);
  const CString modules = mrFiles::combine(folder_of(path), map_modules_folder);
  // Deliberate: the unpacked documents win, also over an archive that is newer.
  if (!mrFiles::folder_exists(headers) || !mrFiles::folder_exists(modules))
    return load_archive(path);
  const long result = load_folder(headers, &mrIDNamer::load_header);
  return SUCCEEDED(result) ? load_folder(modules, &mrIDNamer::load_module) : result;
}

long mrIDNamer::load_folder(const CString& folder, LoadDocument load) {
  CArray<CString, const CString&> files;
  if (!mrFiles::list_files(folder, map_document_extension, files))
    return E_FAIL;
  for (const CString& file : files) {
    const CString path = mrFiles::combine(folder, file);
    report_progress(path);
    mrXmlDocument document;
    HRESULT hr = document.create();
    if (SUCCEEDED(hr))
      hr = required(document.load_file(path));
    if (SUCCEEDED(hr))
      hr = (this->*load)(mr_document_name(file), document);
    if (FAILED(hr))
      return hr;
  }
  return S_OK;
}

long mrIDNamer::load_archive(const CString& path) {
  mrMapArchive archive;
  if (!archive.open(path))
    return E_FAIL;
  report_progress(path);
  // Modules find their numbers in the headers, so those are read completely before, wherever they stand.
  archive.rewind(true);
  const long result = load_entries(archive, &mrIDNamer::load_header);
  if (FAILED(result))
    return result;
  archive.rewind(false);
  return load_entries(archive, &mrIDNamer::load_module);
}

long mrIDNamer::load_entries(mrMapArchive& archive, LoadDocument load) {
  CString name;
  std::string bytes;
  for (;;) {
    const mrMapArchive::Result next = archive.next(name, bytes);
    if (next != mrMapArchive::archiveDocument)
      return next == mrMapArchive::archiveEnd ? S_OK : E_FAIL;
    mrXmlDocument document;
    HRESULT hr = document.create();
    if (SUCCEEDED(hr))
      hr = required(document.load_bytes(bytes));
    if (SUCCEEDED(hr))
      hr = (this->*load)(name, document);
    if (FAILED(hr))
      return hr;
  }
}

// Every //constants/constant.
long mrIDNamer::load_header(const CString& key, const mrXmlDocument& document) {
  enum State : int { elsewhere, inConstants };
  mrHeader* const group = add_header(nullptr, key, CString());
  const Words words;
  const HRESULT hr = document.walk([&](mrXmlElement& element, int parent) {
    // An empty name is a name like any other here.
    if (parent == inConstants && element.is(L"constant"))
      set_last(group->constants, element.attribute(words.name), to_int(element.attribute(words.value)));
    return element.is(L"constants") ? inConstants : elsewhere;
  });
  if (FAILED(hr))
    return hr;
  for (const auto& [name, value] : group->constants)
    enter_value(value, name, key);
  return S_OK;
}

// Every //library/headers/header, then every //library/dialogs/dialog with its controls.
long mrIDNamer::load_module(const CString& name, const mrXmlDocument& document) {
  StoredModule stored;
  const HRESULT hr = read_module(document, stored);
  if (FAILED(hr))
    return hr;
  mrLibraryRes* const module = add_lib(name);
  for (const CString& key : stored.headers) {
    const auto group = m_headers.find(key);
    if (group != m_headers.end())
      module->headers[key] = group->second.get();
  }
  for (StoredDialog& stored_dialog : stored.dialogs) {
    mrDialogRes* const dialog = add_dialog(module, stored_dialog.name);
    if (!dialog)
      continue;
    for (CString& control : stored_dialog.controls)
      record_control(dialog, std::move(control));
  }
  return S_OK;
}
