#include "terminal/YcluiColours.h"

#include <algorithm>

namespace {

constexpr int Red = 1;
constexpr int Green = 2;
constexpr int Yellow = 3;
constexpr int Blue = 4;
constexpr int Magenta = 5;
constexpr int Cyan = 6;

// In the order of YcluiTextKind.
constexpr std::string_view KindNames[] = {
    "blank",  "comment",  "word",  "anywhere", "alias",       "variable", "string",
    "float",  "integer",  "point", "argument", "punctuation", "quote",    "refused",
    "unread", "supposed", "hint",  "prompt",   "message",     "selected", "help"};
// In the order of the terminals' numbers.
constexpr std::string_view ColourNames[] = {"black", "red",     "green", "yellow",
                                            "blue",  "magenta", "cyan",  "white"};
constexpr std::string_view Bright = "bright-";
constexpr std::string_view Blanks = " \t\n";

template <std::size_t Count>
int IndexOf(std::string_view name, const std::string_view (&names)[Count]) {
  const auto found = std::find(std::begin(names), std::end(names), name);
  return found == std::end(names) ? -1 : static_cast<int>(found - std::begin(names));
}

int ColourOf(std::string_view name) {
  const bool isBright = name.starts_with(Bright);
  const int colour = IndexOf(isBright ? name.substr(Bright.size()) : name, ColourNames);
  return isBright && colour >= 0 ? colour + 8 : colour;
}

bool AddAttribute(std::string_view name, YcluiStyle& to) {
  const int colour = ColourOf(name);
  if (colour >= 0) to.colour = colour;
  if (name == "bold") to.bold = true;
  if (name == "dim") to.dim = true;
  if (name == "underline") to.underline = true;
  return colour >= 0 || name == "bold" || name == "dim" || name == "underline" || name == "plain";
}

std::string Quoted(std::string_view text) {
  return '"' + std::string(text) + '"';
}

template <std::size_t Count>
std::string ListOf(const std::string_view (&names)[Count]) {
  std::string list;
  for (const std::string_view name : names) list.append(list.empty() ? "" : ", ").append(name);
  return list;
}

// One setting, "kind=style".
bool ReadSetting(std::string_view setting, YcluiColours& to, std::string& error) {
  const std::size_t equals = std::min(setting.find('='), setting.size());
  const int kind = IndexOf(setting.substr(0, equals), KindNames);
  if (equals == setting.size()) {
    error = "expected KIND=STYLE, found " + Quoted(setting);
    return false;
  }
  if (kind < 0) {
    error = "unknown kind of text " + Quoted(setting.substr(0, equals)) + "; the kinds are " +
            ListOf(KindNames);
    return false;
  }
  YcluiStyle style;
  for (std::size_t begin = equals + 1; begin <= setting.size();) {
    const std::size_t end = std::min(setting.find(',', begin), setting.size());
    const std::string_view name = setting.substr(begin, end - begin);
    if (!AddAttribute(name, style)) {
      error = "unknown style " + Quoted(name) + " in " + Quoted(setting) +
              "; a style is plain, bold, dim, underline or a colour (" + ListOf(ColourNames) +
              ", or one of them after " + std::string(Bright) + ")";
      return false;
    }
    begin = end + 1;
  }
  to.set(static_cast<YcluiTextKind>(kind), style);
  return true;
}

}  // namespace

YcluiColours::YcluiColours() {
  static_assert(std::size(KindNames) == Kinds);
  set(YcluiTextKind::Comment, {.dim = true});
  set(YcluiTextKind::Word, {.colour = Green});
  set(YcluiTextKind::AnywhereWord, {.colour = Cyan});
  set(YcluiTextKind::Alias, {.colour = Green, .bold = true});
  set(YcluiTextKind::Variable, {.colour = Magenta});
  set(YcluiTextKind::StringArgument, {.colour = Yellow});
  for (const YcluiTextKind kind : {YcluiTextKind::FloatArgument, YcluiTextKind::IntegerArgument,
                                   YcluiTextKind::PointArgument, YcluiTextKind::OtherArgument}) {
    set(kind, {.colour = Blue});
  }
  set(YcluiTextKind::OpenQuote, {.colour = Yellow, .bold = true});
  set(YcluiTextKind::Refused, {.colour = Red});
  set(YcluiTextKind::Unread, {.dim = true});
  set(YcluiTextKind::Supposed, {.dim = true});
  set(YcluiTextKind::Hint, {.dim = true});
  set(YcluiTextKind::Prompt, {.colour = Green, .bold = true});
  set(YcluiTextKind::ListSelected, {.bold = true, .underline = true});
  set(YcluiTextKind::ListHelp, {.dim = true});
}

YcluiStyle YcluiColours::ofSupposed(YcluiTextKind kind) const {
  const YcluiStyle added = of(YcluiTextKind::Supposed);
  YcluiStyle style = of(kind);
  if (added.colour >= 0) style.colour = added.colour;
  style.bold |= added.bold;
  style.dim |= added.dim;
  style.underline |= added.underline;
  return style;
}

void YcluiColours::set(YcluiTextKind kind, YcluiStyle style) {
  style.underline |= kind == YcluiTextKind::Refused;
  styles_[static_cast<std::size_t>(kind)] = style;
}

bool YcluiColours::read(std::string_view settings, std::string& error) {
  YcluiColours read = *this;
  for (std::size_t begin; (begin = settings.find_first_not_of(Blanks)) != settings.npos;) {
    settings.remove_prefix(begin);
    const std::size_t end = std::min(settings.find_first_of(Blanks), settings.size());
    if (!ReadSetting(settings.substr(0, end), read, error)) return false;
    settings.remove_prefix(end);
  }
  *this = read;
  return true;
}
