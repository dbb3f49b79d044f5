// The names of one number. Hosts number the controls of every module alike, so there can be hundreds.
#include "namer/mrResourceModel.h"

#include <string_view>
#include <utility>

namespace {

uint64_t pair_of(char first, char second) {
  const unsigned pair = static_cast<unsigned char>(first) * 37u + static_cast<unsigned char>(second) * 11u;
  return uint64_t{1} << (pair % 64);
}

// One bit per pair of neighbouring characters: whatever contains a text has all of the text's bits.
uint64_t pairs_of(std::string_view text) {
  uint64_t bits = 0;
  for (size_t i = 1; i < text.size(); ++i)
    bits |= pair_of(text[i - 1], text[i]);
  return bits;
}

// The pairs of "key.name" that are neither in the name nor in the short key.
uint64_t pairs_between(std::string_view key, std::string_view name) {
  uint64_t bits = name.empty() ? 0 : pair_of('.', name[0]);
  if (!key.empty())
    bits |= pair_of(key[key.size() - 1], '.');
  if (key.size() > 1)
    bits |= pair_of(key[key.size() - 2], key[key.size() - 1]);
  return bits;
}

bool contains(const CString& text, std::string_view part) {
  return text.str().find(part) != std::string::npos;
}

}  // namespace

// In a single allocation.
CString mr_qualified_name(const CString& key, const CString& name) {
  std::string text;
  text.reserve(key.str().size() + 1 + name.str().size());
  text += key.str();
  text += '.';
  text += name.str();
  return CString(std::move(text));
}

// A name that displaces a longer one may have been entered already, behind it.
void mrNameArray::remove_behind(size_t place, const CString& qualified) {
  for (size_t i = m_pairs.size(); --i > place;) {
    if (GetAt(static_cast<ptrdiff_t>(i)) != qualified)
      continue;
    RemoveAt(static_cast<ptrdiff_t>(i));
    m_pairs.erase(m_pairs.begin() + static_cast<ptrdiff_t>(i));
  }
}

// Deliberate: plain tests of length and substring, so names of one group can displace each other as well.
void mrNameArray::enter(const CString& name, const CString& key) {
  CString qualified = mr_qualified_name(key, name);
  const std::string_view short_key =
      std::string_view(key.str()).substr(0, key.IsEmpty() ? 0 : key.str().size() - 1);
  const uint64_t needed = pairs_of(name.str()) | pairs_of(short_key);
  const uint64_t all = needed | pairs_between(key.str(), name.str());
  for (size_t i = 0; i < m_pairs.size(); ++i) {
    // What lacks a pair contains neither the qualified name nor both of the parts.
    if ((needed & ~m_pairs[i]) != 0)
      continue;
    CString& entry = ElementAt(static_cast<ptrdiff_t>(i));
    if (entry == qualified)
      return;
    const int longer = entry.GetLength() - qualified.GetLength();
    const bool near = longer == 1 || longer == -1;
    if (!near || !contains(entry, name.str()) || !contains(entry, short_key))
      continue;
    if (longer == 1) {
      remove_behind(i, qualified);
      ElementAt(static_cast<ptrdiff_t>(i)) = qualified;
      m_pairs[i] = all;
    }
    return;
  }
  m_pairs.push_back(all);
  // Moved in: the array takes its elements by reference, and would copy it.
  ElementAt(Add(CString())) = std::move(qualified);
}
