// Brings an XML document into UTF-8. Any thread.

#pragma once

#include <string>
#include <string_view>

namespace tallyglass {

/// The document in UTF-8, without its byte-order mark. A byte-order mark (UTF-8, UTF-16) decides,
/// then the encoding that the XML declaration names (UTF-8, US-ASCII, ISO-8859-1), and without both it is
/// UTF-8. The result is a view of `document`, or of `buffer` if bytes had to be converted. What was UTF-8
/// from the start isn't checked. Throws PropertyListError for another encoding, and for more than a GiB to
/// convert.
[[nodiscard]] std::string_view convertXMLToUTF8(std::string_view document, std::string& buffer);

} // namespace tallyglass
