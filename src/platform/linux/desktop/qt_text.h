#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace karvel {

inline QString toQt(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

inline std::string fromQt(const QString& text) {
  return text.toUtf8().toStdString();
}

/// A caption for widgets that underline the character after "&": shown letter for letter.
inline QString literalCaption(const std::string& caption) {
  return toQt(caption).replace(QLatin1Char('&'), QLatin1String("&&"));
}

/// A tool tip letter for letter: Qt takes a text with tags for HTML, and a server may have sent it.
inline QString literalToolTip(const QString& text) {
  return text.isEmpty() ? text
                        : QLatin1String("<p>") + text.toHtmlEscaped() + QLatin1String("</p>");
}

/// A window title letter for letter: Qt takes "[*]" for its mark of unsaved changes, and puts the
/// program's name in the place of an empty title.
inline QString literalTitle(const std::string& title) {
  if (title.empty()) return QStringLiteral(" ");
  return toQt(title).replace(QLatin1String("[*]"), QLatin1String("[*][*]"));
}

}  // namespace karvel
