// A page of HTML from an XML document.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace support {

// The page that the XSLT stylesheet, which includes page.xsl of this folder, makes of the document
// and of parameters, names and texts. The program xsltproc, which is looked for along PATH, makes
// it. Throws std::runtime_error when that is missing or fails.
std::string HtmlPage(const std::string& stylesheet, const std::string& document,
                     const std::vector<std::pair<std::string, std::string>>& parameters);

}  // namespace support
