// How a piece of text looks.

#ifndef TERMINAL_YCLUISTYLE_H_
#define TERMINAL_YCLUISTYLE_H_

struct YcluiStyle {
  int colour = -1;  // 0 to 7 as terminals number them, 8 to 15 their bright ones; -1: the usual one
  bool bold = false;
  bool dim = false;
  bool underline = false;

  bool operator==(const YcluiStyle& other) const {
    return colour == other.colour && bold == other.bold && dim == other.dim &&
           underline == other.underline;
  }
};

#endif  // TERMINAL_YCLUISTYLE_H_
