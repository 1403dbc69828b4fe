// Converts an XML document to UTF-8. Any thread.

#pragma once

#include <string>
#include <string_view>

namespace tallyglass {

/// The document in UTF-8, without its byte-order mark. The encoding is that of the byte-order mark (UTF-8,
/// UTF-16), else that in the XML declaration (UTF-8, US-ASCII, ISO-8859-1), else UTF-8. The result is a view
/// of `document`, or of `buffer` if it had to be converted. UTF-8 input isn't checked. Throws
/// PropertyListError for another encoding, and for more than a GiB to convert.
[[nodiscard]] std::string_view convertXMLToUTF8(std::string_view document, std::string& buffer);

} // namespace tallyglass
