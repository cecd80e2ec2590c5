// Offsets in the text of the outermost interpret. Internal to the parser.

#ifndef PARSER_YCLUITEXTOFFSETS_H_
#define PARSER_YCLUITEXTOFFSETS_H_

// Converts offsets of the lexer, which count from the start of its present text, to offsets that
// count from the start of the text given to the outermost interpret. Text that was still unread
// before that call has negative offsets.
class YcluiTextOffsets {
 public:
  // The outermost interpret begins: offsets count from the end of the lexer's text.
  void beginOuter() {
    token_ -= end();
    base_ = -length_;
  }
  // The lexer's text was replaced by one of this length, which follows it.
  void replaceText(long length) {
    base_ += length_;
    length_ = length;
  }
  // The lexer's text became longer by this.
  void appendText(long length) { length_ += length; }
  // The end of the lexer's text.
  long end() const { return base_ + length_; }

  // The last token. setToken expects an offset in the lexer's text.
  void setToken(long offset) { token_ = base_ + offset; }
  long token() const { return token_; }
  // Converts an offset in the lexer's text.
  long of(long offset) const { return base_ + offset; }

  // During the lifetime of this object the lexer's text is suspended and replaced by an empty one.
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
  long base_ = 0;    // offset of the start of the lexer's text
  long length_ = 0;  // of the lexer's text
};

#endif  // PARSER_YCLUITEXTOFFSETS_H_
