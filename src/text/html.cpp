#include "text/html.h"

namespace karvel {

std::string htmlText(std::string_view text) {
  std::string html;
  for (const char c : text) {
    if (c == '&') {
      html += "&amp;";
    } else if (c == '<') {
      html += "&lt;";
    } else if (c == '>') {
      html += "&gt;";
    } else if (c == '"') {
      html += "&quot;";
    } else {
      html += c;
    }
  }
  return html;
}

}  // namespace karvel
