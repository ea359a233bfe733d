#include "ftp/server_names.h"

#include "text/code_page.h"
#include "text/server_text.h"

namespace karvel {

std::string ServerNames::read(std::string_view bytes) {
  std::string name = textOfServer(bytes);
  if (name != bytes) written_.emplace(name, bytes);
  utf8_ = utf8_ || isServerUtf8(bytes);
  return name;
}

std::string ServerNames::written(const std::string& name) const {
  const auto found = written_.find(name);
  if (found != written_.end()) return found->second;
  return utf8_ ? name : toCodePage932(name);
}

}  // namespace karvel
