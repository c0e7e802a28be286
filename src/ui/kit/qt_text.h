// SPDX-License-Identifier: GPL-3.0-or-later
// Texts and paths across the border to Qt.
#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace tunemeadow {

/// UTF-8 text as Qt's text.
[[nodiscard]] inline QString ToQt(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// Qt's text as UTF-8.
[[nodiscard]] inline std::string FromQt(const QString& text) {
  const QByteArray bytes = text.toUtf8();
  return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

/// A path for the eye: bytes that are not UTF-8 are replaced. Never opened again.
[[nodiscard]] inline QString PathForEye(std::string_view path) { return ToQt(path); }

/// A caption that holds user text: "&" doubled, so that it is no mnemonic.
[[nodiscard]] inline QString CaptionText(std::string_view text) {
  return ToQt(text).replace(QLatin1Char('&'), QLatin1String("&&"));
}

/// Twips (1/1440 inch) are 15 to a pixel at 96 dots per inch.
inline constexpr int kTwipsPerPixel = 15;

}  // namespace tunemeadow
