#pragma once

#include <QString>
#include <cstddef>
#include <string>

namespace karvel {

inline QString toQt(const std::string& text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

inline std::string fromQt(const QString& text) {
  return text.toUtf8().toStdString();
}

/// A caption for widgets that underline the character after "&": shown letter for letter.
inline QString literalCaption(const std::string& caption) {
  return toQt(caption).replace(QLatin1Char('&'), QLatin1String("&&"));
}

/// A window title letter for letter: Qt takes "[*]" for its mark of unsaved changes, and puts the
/// program's name in the place of an empty title.
inline QString literalTitle(const std::string& title) {
  if (title.empty()) return QStringLiteral(" ");
  return toQt(title).replace(QLatin1String("[*]"), QLatin1String("[*][*]"));
}

/// Index of the n-th character in Qt's UTF-16 text; its size when there are fewer characters.
qsizetype utf16Index(const QString& text, std::size_t characters);

}  // namespace karvel
