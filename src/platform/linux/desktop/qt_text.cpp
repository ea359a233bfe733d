#include "platform/linux/desktop/qt_text.h"

namespace karvel {

qsizetype utf16Index(const QString& text, std::size_t characters) {
  qsizetype index = 0;
  while (characters > 0 && index < text.size()) {
    const bool pair = text[index].isHighSurrogate() && index + 1 < text.size();
    index += pair ? 2 : 1;
    --characters;
  }
  return index;
}

}  // namespace karvel
