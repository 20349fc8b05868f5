#include "platform/linux/files/property_list_xml.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <memory>
#include <new>
#include <string_view>
#include <system_error>
#include <utility>

#include <expat.h>
#include <utf8cpp/utf8.h>

namespace platform::backend {
namespace {

constexpr std::string_view scalars[] = {"string", "integer", "real",  "date",
                                        "data",   "true",    "false", "key"};

bool isContainer(std::string_view tag) {
  return tag == "dict" || tag == "array";
}

bool isScalar(std::string_view tag) {
  return std::ranges::find(scalars, tag) != std::end(scalars);
}

void appendEscaped(std::string& target, std::string_view text) {
  for (const char character : text) {
    if (character == '&') {
      target += "&amp;";
    } else if (character == '<') {
      target += "&lt;";
    } else if (character == '>') {
      target += "&gt;";
    } else {
      target += character;
    }
  }
}

void appendElement(std::string& target, std::string_view tag, std::string_view text) {
  target.append("<").append(tag).append(">");
  appendEscaped(target, text);
  target.append("</").append(tag).append(">");
}

bool isSpace(std::string_view text) {
  return text.find_first_not_of(" \t\r\n") == text.npos;
}

// Builds a list from the parser's events. A list may be nested as deeply as its size allows,
// because neither this class nor the parser uses recursion.
class Reader {
 public:
  Reader() : parser_(XML_ParserCreate(nullptr)) {
    if (!parser_) throw std::bad_alloc();
    XML_SetUserData(parser_.get(), this);
    XML_SetElementHandler(
        parser_.get(),
        [](void* self, const char* tag, const char**) { static_cast<Reader*>(self)->begin(tag); },
        [](void* self, const char* tag) { static_cast<Reader*>(self)->end(tag); });
    XML_SetCharacterDataHandler(parser_.get(), [](void* self, const char* text, int length) {
      static_cast<Reader*>(self)->add({text, static_cast<std::size_t>(length)});
    });
    // Entities that a list declares could expand to any size.
    XML_SetEntityDeclHandler(
        parser_.get(), [](void* self, const char*, int, const char*, int, const char*, const char*,
                          const char*, const char*) { static_cast<Reader*>(self)->fail(); });
    XML_SetSkippedEntityHandler(
        parser_.get(), [](void* self, const char*, int) { static_cast<Reader*>(self)->fail(); });
  }

  std::optional<PropertyListContents> read(std::span<const std::uint8_t> xml) {
    const auto status = XML_Parse(parser_.get(), reinterpret_cast<const char*>(xml.data()),
                                  static_cast<int>(xml.size()), XML_TRUE);
    if (isOutOfMemory_ || XML_GetErrorCode(parser_.get()) == XML_ERROR_NO_MEMORY) {
      throw std::bad_alloc();
    }
    if (status != XML_STATUS_OK || !hasRoot_) return std::nullopt;
    return std::move(list_);
  }

 private:
  struct Level {
    bool isDictionary;
    bool expectsKey;
  };

  struct Free {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
  };

  void fail() {
    isStopped_ = true;
    XML_StopParser(parser_.get(), XML_FALSE);
  }

  // Exceptions must not pass through the parser, which is C code. Some events still arrive after it
  // was stopped.
  template <typename Work>
  void guarded(Work work) {
    if (isStopped_) return;
    try {
      if (!work()) fail();
    } catch (const std::bad_alloc&) {
      isOutOfMemory_ = true;
      fail();
    }
  }

  void begin(std::string_view tag) {
    guarded([&] { return beginElement(tag); });
  }
  void end(std::string_view tag) {
    guarded([&] { return endElement(tag); });
  }
  void add(std::string_view text) {
    guarded([&] { return addText(text); });
  }

  bool beginElement(std::string_view tag) {
    if (isInScalar_) return false;
    if (levels_.empty()) return beginOutermost(tag);
    Level& level = levels_.back();
    const bool isKey = tag == "key";
    if (level.isDictionary ? isKey != level.expectsKey : isKey) return false;
    if (isContainer(tag)) {
      levels_.push_back({tag == "dict", true});
      markup_.append("<").append(tag).append(">");
      return true;
    }
    isInScalar_ = true;
    text_.clear();
    return isScalar(tag);
  }

  bool beginOutermost(std::string_view tag) {
    if (tag == "plist" && !std::exchange(isInPlist_, true)) return !hasRoot_;
    if (!isContainer(tag) || std::exchange(hasRoot_, true)) return false;
    list_.isDictionary = tag == "dict";
    levels_.push_back({list_.isDictionary, true});
    return true;
  }

  // Returns true if the root is the only open container.
  bool isOutermost() const { return levels_.size() == 1; }

  bool endElement(std::string_view tag) {
    if (tag == "plist") return true;
    if (isInScalar_) return endScalar(tag);
    if (levels_.back().isDictionary && !levels_.back().expectsKey) return false;
    levels_.pop_back();
    if (levels_.empty()) return true;
    markup_.append("</").append(tag).append(">");
    if (isOutermost()) takeValue({false, std::exchange(markup_, {})});
    return endOfValue();
  }

  bool endScalar(std::string_view tag) {
    isInScalar_ = false;
    const bool isKey = tag == "key";
    if (isOutermost() && isKey) {
      key_ = text_;
    } else if (isOutermost() && tag == "string") {
      takeValue({true, text_});
    } else {
      appendElement(markup_, tag, text_);
      if (isOutermost()) takeValue({false, std::exchange(markup_, {})});
    }
    if (!isKey) return endOfValue();
    levels_.back().expectsKey = false;
    return true;
  }

  bool endOfValue() {
    levels_.back().expectsKey = true;
    return true;
  }

  void takeValue(PropertyListValue value) {
    list_.entries.push_back({list_.isDictionary ? std::exchange(key_, {}) : "", std::move(value)});
  }

  bool addText(std::string_view text) {
    if (!isInScalar_) return isSpace(text);
    text_ += text;
    return true;
  }

  std::unique_ptr<XML_ParserStruct, Free> parser_;
  PropertyListContents list_;
  std::vector<Level> levels_;
  bool isInPlist_ = false;
  bool hasRoot_ = false;
  bool isInScalar_ = false;
  bool isStopped_ = false;
  bool isOutOfMemory_ = false;
  // The text of the current scalar, the key of the current entry, and the markup of the containers
  // in that entry.
  std::string text_;
  std::string key_;
  std::string markup_;
};

constexpr std::string_view start =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
    "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
    "<plist version=\"1.0\">\n";

bool isXmlCharacter(std::uint32_t character) {
  if (character < ' ') return character == '\t' || character == '\n' || character == '\r';
  const bool isSurrogate = character >= 0xD800 && character <= 0xDFFF;
  return !isSurrogate && character != 0xFFFE && character != 0xFFFF && character <= 0x10FFFF;
}

// Returns the text with bytes that are not UTF-8 converted from Latin 1, whose bytes are the
// numbers of its characters.
std::string utf8Of(std::string_view text) {
  std::string utf8;
  while (!text.empty()) {
    const auto* invalid = utf8::find_invalid(text.begin(), text.end());
    utf8.append(text.begin(), invalid);
    text.remove_prefix(static_cast<std::size_t>(invalid - text.begin()));
    if (text.empty()) break;
    utf8::append(static_cast<unsigned char>(text.front()), std::back_inserter(utf8));
    text.remove_prefix(1);
  }
  return utf8;
}

// Returns the length of a reference to a character that XML does not allow, such as "&#1;", at the
// start of the text, or 0 if there is none.
std::size_t lengthOfWrongReference(std::string_view text) {
  constexpr std::size_t maxLength = 12;
  const std::size_t end = text.substr(0, maxLength).find(';');
  if (!text.starts_with("&#") || end == text.npos) return 0;
  const bool isHexadecimal = text[2] == 'x';
  const char* digits = text.data() + (isHexadecimal ? 3 : 2);
  std::uint32_t character = 0;
  const auto [rest, error] =
      std::from_chars(digits, text.data() + end, character, isHexadecimal ? 16 : 10);
  const bool isNumber = error == std::errc() && rest == text.data() + end;
  return isNumber && !isXmlCharacter(character) ? end + 1 : 0;
}

// Returns the text without comments and without references to characters that XML does not allow.
std::string withoutWhatIsRefused(std::string_view text) {
  std::string kept;
  while (!text.empty()) {
    constexpr std::string_view beginOfComment = "<!--";
    constexpr std::string_view endOfComment = "-->";
    std::size_t skipped = lengthOfWrongReference(text);
    if (text.starts_with(beginOfComment)) {
      const std::size_t end = text.find(endOfComment, beginOfComment.size());
      skipped = end == text.npos ? text.size() : end + endOfComment.size();
    }
    if (skipped == 0) {
      kept += text.front();
      skipped = 1;
    }
    text.remove_prefix(skipped);
  }
  return kept;
}

// Returns the list without anything that other programs may have left before or after it, and
// without an XML declaration, which may name another encoding.
std::string_view listIn(std::string_view text) {
  constexpr std::string_view end = "</plist>";
  text.remove_prefix(std::min(text.find('<'), text.size()));
  if (text.starts_with("<?")) text.remove_prefix(std::min(text.find('>') + 1, text.size()));
  const std::size_t at = text.rfind(end);
  return at == text.npos ? text : text.substr(0, at + end.size());
}

std::span<const std::uint8_t> bytesOf(const std::string& text) {
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

}  // namespace

std::optional<PropertyListContents> parsePropertyListXml(std::span<const std::uint8_t> xml) {
  if (auto list = Reader().read(xml)) return list;
  const std::string_view text(reinterpret_cast<const char*>(xml.data()), xml.size());
  return Reader().read(bytesOf(withoutWhatIsRefused(validXml(utf8Of(listIn(text))))));
}

std::string validXml(const std::string& text) {
  std::string utf8;
  utf8::replace_invalid(text.begin(), text.end(), std::back_inserter(utf8));
  std::string valid;
  for (auto at = utf8.begin(); at != utf8.end();) {
    const auto character = at;
    if (isXmlCharacter(utf8::unchecked::next(at))) valid.append(character, at);
  }
  return valid;
}

std::string propertyListXml(const PropertyListContents& list) {
  std::string xml(start);
  xml += list.isDictionary ? "<dict>\n" : "<array>\n";
  for (const PropertyListEntry& entry : list.entries) {
    if (list.isDictionary) {
      xml += "\t";
      appendElement(xml, "key", entry.key);
      xml += "\n";
    }
    xml += "\t";
    if (entry.value.isString) {
      appendElement(xml, "string", entry.value.content);
    } else {
      xml += entry.value.content;
    }
    xml += "\n";
  }
  xml += list.isDictionary ? "</dict>\n" : "</array>\n";
  return validXml(xml + "</plist>\n");
}

}  // namespace platform::backend
