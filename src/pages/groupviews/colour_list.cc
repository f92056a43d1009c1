#include "pages/groupviews/colour_list.h"

#include <algorithm>
#include <array>

#include "base/text.h"
#include "html/form_parts.h"
#include "request/texts.h"

namespace orlune {
namespace {

struct PaletteColour {
  Markup Value;
  Text Label;
};

constexpr std::array<PaletteColour, 16> kPalette{{
    {"#000000", Text::kBlack},
    {"#FFFFFF", Text::kWhite},
    {"#C0C0C0", Text::kLightGray},
    {"#FF0000", Text::kRed},
    {"#00FF00", Text::kGreen},
    {"#0000FF", Text::kBlue},
    {"#FFFF00", Text::kYellow},
    {"#00FFFF", Text::kCyan},
    {"#FF00FF", Text::kMagenta},
    {"#808080", Text::kDarkGray},
    {"#800000", Text::kDarkRed},
    {"#008000", Text::kDarkGreen},
    {"#000080", Text::kDarkBlue},
    {"#808000", Text::kDarkYellow},
    {"#008080", Text::kDarkCyan},
    {"#800080", Text::kDarkMagenta},
}};

/// Keywords and global variables of browsers: these names do not refer to an element with that id.
constexpr std::array kScriptWords{
    "alert",      "await",      "blur",      "break",       "caches",      "case",        "catch",
    "chrome",     "class",      "close",     "closed",      "confirm",     "console",     "const",
    "continue",   "crypto",     "debugger",  "default",     "delete",      "do",          "document",
    "else",       "enum",       "escape",    "eval",        "event",       "export",      "extends",
    "external",   "false",      "fetch",     "finally",     "find",        "focus",       "for",
    "frames",     "function",   "history",   "if",          "implements",  "import",      "in",
    "instanceof", "interface",  "length",    "let",         "location",    "locationbar", "menubar",
    "name",       "navigation", "navigator", "new",         "null",        "open",        "opener",
    "origin",     "package",    "parent",    "performance", "personalbar", "print",       "private",
    "prompt",     "protected",  "public",    "return",      "scheduler",   "screen",      "scroll",
    "scrollbars", "self",       "static",    "status",      "statusbar",   "stop",        "super",
    "switch",     "this",       "throw",     "toolbar",     "top",         "true",        "try",
    "typeof",     "undefined",  "unescape",  "var",         "void",        "while",       "window",
    "with",       "yield"};

bool IsLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool IsLetterOrDigit(char c) {
  return IsLetter(c) || (c >= '0' && c <= '9');
}

/// Whether `name` refers to the element with that id in a script.
bool IsScriptName(std::string_view name) {
  return !name.empty() && IsLetter(name.front()) && std::all_of(name.begin(), name.end(), IsLetterOrDigit) &&
         std::find(kScriptWords.begin(), kScriptWords.end(), name) == kScriptWords.end();
}

Html RepaintAttribute(std::string_view calendar, ColourKind kind) {
  const Markup property = kind == ColourKind::kBackground ? Markup("background") : Markup("color");
  return Html(" onChange=\"javascript:{}.style.{}=this.value;\"", ScriptAttribute(calendar), property);
}

}  // namespace

Html ColourList(const PageContext& context, std::string_view calendar, ColourKind kind,
                std::string_view colour) {
  Html list("<SELECT NAME=\"{}{}\"", Attribute(calendar),
            kind == ColourKind::kBackground ? Markup("BG") : Markup("FG"));
  if (context.IsCompatibleBrowser && IsScriptName(calendar)) list.Add(RepaintAttribute(calendar, kind));
  list.Add("><OPTION VALUE=\"\">\r\n");
  for (const PaletteColour& choice : kPalette) {
    list.Add("<OPTION VALUE=\"{}\"{}>{}", choice.Value,
             SelectedWhen(EqualIgnoringCase(choice.Value.Text(), colour)),
             Content(LoadText(context, choice.Label)));
  }
  return list.Add("</SELECT>");
}

Html PaintScript(std::span<const std::string> calendars) {
  Html script("<SCRIPT LANGUAGE=javascript>\r\n<!--\r\n");
  for (const std::string& calendar : calendars) {
    if (!IsScriptName(calendar)) continue;
    const HtmlPart name = Script(calendar);
    script.Add(
        "{}.style.background=document.acForm.{}BG.value;{}.style.color=document.acForm.{}FG.value;\r\n", name,
        name, name, name);
  }
  return script.Add("//-->\r\n</SCRIPT>");
}

}  // namespace orlune
