// Values of E57 elements, which tell their types by an attribute.
#pragma once

#include <pugixml.hpp>

#include <cstddef>
#include <cstdint>
#include <string>

namespace tarvo::exchange::e57 {

// Parses the text, which must outlive the document and is changed. Throws Failure for what is no
// XML, has a document type, or nests deeper than any E57 file does. fileName: for the message.
void parseXml(pugi::xml_document& document, std::string& text, const std::string& fileName);

// Of an element or an attribute; what is left out or empty has the default value. Throws Failure
// for what is no number.
double realOf(const pugi::xml_node& node, const std::string& fileName);
double realOf(const pugi::xml_attribute& attribute, double usual, const std::string& fileName);
std::int64_t wholeOf(const pugi::xml_attribute& attribute, std::int64_t usual,
                     const std::string& fileName);
std::uint64_t countOf(const pugi::xml_attribute& attribute, const std::string& fileName);

// The children of a node as a JSON object or array, without records, images and other binary data.
std::string jsonOf(const pugi::xml_node& node, bool isArray);

}  // namespace tarvo::exchange::e57
