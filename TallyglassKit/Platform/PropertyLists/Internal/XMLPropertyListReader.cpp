#include "TallyglassKit/Platform/PropertyLists/Internal/XMLPropertyListReader.h"

#include "TallyglassKit/Platform/PropertyLists/Internal/PropertyListBuilder.h"
#include "TallyglassKit/Platform/PropertyLists/XMLTokenizer.h"

namespace tallyglass {

PropertyListValue readXMLPropertyList(std::string_view bytes, PropertyListStorage& storage) {
    using Token = XMLTokenizer::Token;
    static_assert(XMLTokenizer::maximumDepth == PropertyListStorage::maximumNesting);

    XMLTokenizer xml(bytes);
    PropertyListBuilder builder(storage, bytes);
    for (;;) {
        switch (xml.next()) {
        case Token::dictionary:
            builder.beginDictionary(0); // the tokenizer limits the nesting
            break;
        case Token::array:
            builder.beginArray(0);
            break;
        case Token::endDictionary:
        case Token::endArray:
            builder.end();
            break;
        case Token::key:
            builder.key(xml.text());
            break;
        case Token::string:
            builder.text(xml.text());
            break;
        case Token::integer:
            if (const auto value = xml.integer().asSigned())
                builder.integer(*value);
            else
                builder.unsignedInteger(xml.integer().bits);
            break;
        case Token::real:
            builder.real(xml.real());
            break;
        case Token::boolean:
            builder.boolean(xml.boolean());
            break;
        case Token::date:
            builder.date(secondsSince2001(xml.date()));
            break;
        case Token::data:
            builder.data(xml.text());
            break;
        case Token::end:
            return builder.root();
        }
    }
}

} // namespace tallyglass
