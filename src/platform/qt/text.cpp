#include "platform/text.h"

#include <QByteArrayView>
#include <QString>
#include <QStringDecoder>
#include <QStringEncoder>

namespace platform {
namespace {

constexpr const char* kWindows1252 = "windows-1252";

// Piece by piece, since a file may be large and is three times as large on its way.
std::string Converted(std::string_view text, QStringDecoder&& from, QStringEncoder&& to) {
    constexpr std::size_t kPiece = 1 << 16;
    std::string converted;
    for (; !text.empty(); text.remove_prefix(std::min(kPiece, text.size()))) {
        const QString piece = from(QByteArrayView(text.substr(0, kPiece)));
        const QByteArray bytes = to(piece);
        converted.append(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    }
    return converted;
}

}  // namespace

std::string ToUtf8(std::string_view bytes) {
    if (QByteArrayView(bytes).isValidUtf8()) return std::string(bytes);
    return Converted(bytes, QStringDecoder(kWindows1252), QStringEncoder(QStringEncoder::Utf8));
}

std::string ToWindows1252(std::string_view text) {
    return Converted(text, QStringDecoder(QStringDecoder::Utf8), QStringEncoder(kWindows1252));
}

std::string FoldedCase(std::string_view text) {
    return QString::fromUtf8(QByteArrayView(text)).toCaseFolded().toStdString();
}

}  // namespace platform
