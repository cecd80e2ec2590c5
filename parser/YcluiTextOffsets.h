// Offsets in the text of the outermost interpret.

#ifndef PARSER_YCLUITEXTOFFSETS_H_
#define PARSER_YCLUITEXTOFFSETS_H_

// The lexer counts from the start of its present text. This class converts its offsets to those
// that count from the start of the text given to the outermost interpret; what came before that has
// negative offsets.
class YcluiTextOffsets {
 public:
  // From now on offsets count from the end of all text so far.
  void beginOuter() {
    token_ -= end();
    base_ = -length_;
  }
  // The lexer's text was replaced by one of this length.
  void replaceText(long length) {
    base_ += length_;
    length_ = length;
  }
  void appendText(long length) { length_ += length; }
  // The end of the lexer's text.
  long end() const { return base_ + length_; }

  // The last token begins at this offset of the lexer's text.
  void setToken(long offset) { token_ = base_ + offset; }
  long token() const { return token_; }
  // That offset of the lexer's text.
  long of(long offset) const { return base_ + offset; }

  // The lexer's text is suspended, and an empty one in its place, for the lifetime of this object.
  class Suspended {
   public:
    explicit Suspended(YcluiTextOffsets& offsets)
        : offsets_(offsets), base_(offsets.base_), length_(offsets.length_) {
      offsets_.replaceText(0);
    }
    Suspended(const Suspended&) = delete;
    Suspended& operator=(const Suspended&) = delete;
    ~Suspended() {
      offsets_.base_ = base_;
      offsets_.length_ = length_;
    }

   private:
    YcluiTextOffsets& offsets_;
    long base_;
    long length_;
  };

 private:
  long token_ = 0;
  long base_ = 0;    // where the lexer's text begins
  long length_ = 0;  // of the lexer's text
};

#endif  // PARSER_YCLUITEXTOFFSETS_H_
