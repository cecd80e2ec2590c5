#include "terminal/YcluiPainter.h"

namespace {

YcluiTextKind KindOf(YcluiPieceKind kind) {
  switch (kind) {
    case YcluiPieceBlank:
      return YcluiTextKind::Blank;
    case YcluiPieceComment:
      return YcluiTextKind::Comment;
    case YcluiPieceWord:
      return YcluiTextKind::Word;
    case YcluiPieceAnywhereWord:
      return YcluiTextKind::AnywhereWord;
    case YcluiPieceAlias:
      return YcluiTextKind::Alias;
    case YcluiPieceVariable:
      return YcluiTextKind::Variable;
    case YcluiPieceString:
      return YcluiTextKind::StringArgument;
    case YcluiPieceFloat:
      return YcluiTextKind::FloatArgument;
    case YcluiPieceInteger:
      return YcluiTextKind::IntegerArgument;
    case YcluiPiecePoint:
      return YcluiTextKind::PointArgument;
    case YcluiPiecePunctuation:
      return YcluiTextKind::Punctuation;
    case YcluiPieceOpenQuote:
      return YcluiTextKind::OpenQuote;
    case YcluiPieceRefused:
      return YcluiTextKind::Refused;
    case YcluiPieceUnread:
      return YcluiTextKind::Unread;
  }
  return YcluiTextKind::Blank;
}

}  // namespace

YcluiStyledText YcluiPaint(const YcluiPreview& preview, const std::string& text,
                           std::size_t unfinished, const YcluiColours& colours) {
  YcluiStyledText painted;
  for (int i = 0; i < preview.count(); ++i) {
    const YcluiPiece& piece = preview.piece(i);
    const bool isUnfinished = piece.kind == YcluiPieceRefused && piece.end == unfinished;
    const YcluiTextKind kind = isUnfinished ? YcluiTextKind::Blank : KindOf(piece.kind);
    const std::string_view part =
        std::string_view(text).substr(piece.begin, piece.end - piece.begin);
    painted.add(part, piece.isSupposed ? colours.ofSupposed(kind) : colours.of(kind));
  }
  return painted;
}
