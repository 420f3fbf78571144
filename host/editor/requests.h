// What a prompt asks for, what can answer it, and the answer it gets: the
// one vocabulary of user input shared by the acedGetXxx calls, their
// AutoLISP forms and the prompts of the built-in commands.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace kelhost::editor {

// One item of input as it reaches a prompt: typed text, or a value an
// AutoLISP program or an application passed to a command.
struct Token {
  enum Kind : std::uint8_t {
    kText,    // typed text, or a string argument of a command call
    kEnter,   // Enter: "" or RTNONE in a command call, an empty line typed
    kPause,   // PAUSE ("\\") in a command call: the user answers this prompt
    kCancel,  // Escape, the end of the input, or (command) with no argument
    kReal,    // a number passed as a value
    kInt,
    kPoint,   // a point passed as a value (dim 2 or 3)
    kEname,   // an entity name
    kPick,    // an entity name with the point it was picked at, as entsel gives
    kPickset, // a selection set
  };
  Kind kind = kEnter;
  std::wstring text;
  double value[3] = {0.0, 0.0, 0.0};  // kReal: value[0]; kPoint, kPick: the point
  int dim = 3;
  std::int64_t integer = 0;
  std::int64_t name[2] = {0, 0};      // kEname, kPick, kPickset

  static Token Text(std::wstring t) {
    Token k;
    k.kind = t.empty() ? kEnter : kText;
    k.text = std::move(t);
    return k;
  }
  static Token Of(Kind kind) {
    Token k;
    k.kind = kind;
    return k;
  }
  // The text a value stands for when a prompt reads it as typed input
  // (numbers in full precision, points as "x,y,z").
  std::wstring asText() const;
};

// Keywords of a prompt: local names the user types (any case, shortened to
// at least their capital letters or to the abbreviation given after a
// comma) and the global (English) names that "_" selects. A keyword list
// is written as the platform writes it: "Pi Two-pi", "LType,LT Color",
// "Local1 Local2 _ Global1 Global2".
struct Keyword {
  std::wstring local;   // as written, with its capitals
  std::wstring abbrev;  // upper case: the shortest form accepted
  std::wstring global;  // returned when matched
  // Upper case, for matching: the local and global words and the global
  // word's abbreviation.
  std::wstring upperLocal, upperGlobal, globalAbbrev;
};
class Keywords {
 public:
  Keywords() = default;
  explicit Keywords(const std::wstring& list);
  bool empty() const { return !mWords || mWords->empty(); }
  const std::vector<Keyword>& words() const;
  // The global name of the keyword text stands for, or empty; an "_"
  // before text matches global names only.
  std::wstring match(const std::wstring& text) const;

 private:
  // Shared: requests are copied at every prompt.
  std::shared_ptr<const std::vector<Keyword>> mWords;
};

// What the prompt wants.
enum class Want : std::uint8_t {
  kPoint,      // a point (getpoint; a command's point prompt)
  kCorner,     // the other corner of a rectangle from the base point
  kDist,       // a distance: a number, or two points (or one after the base)
  kAngle,      // an angle measured from ANGBASE in the ANGDIR sense
  kOrient,     // an angle measured from east, anticlockwise
  kReal,
  kInt,
  kString,     // any text
  kKword,      // one of the keywords
  kEntity,     // an object picked with a point (entsel)
  kSelect,     // "Select objects:": a pick point, a window mode keyword, an object or a set
  kCommand,    // the "Command:" prompt itself
};

// The initget bits. Those about drawing on the screen (dashed rubber
// bands, a UCS that follows faces, tracking in Z, object snaps) change
// nothing in a host without a screen, but are accepted.
enum InputFlags : int {
  kNoNull = 1,
  kNoZero = 2,
  kNoNegative = 4,
  kNoLimits = 8,       // points outside LIMMIN..LIMMAX even when LIMCHECK is on
  kDashed = 32,
  kIgnoreZ = 64,       // getdist: a distance in the XY plane
  kArbitrary = 128,    // any text is accepted and returned as a keyword
  kDirectDistance = 256,  // a number at a point prompt with a base is a distance first
  kTrackUcs = 512,
  kNoOrthoZ = 1024,
  kNoOsnap = 2048,
};

struct Request {
  Want want = Want::kString;
  std::wstring prompt;   // written as it stands ("\n" and all)
  int flags = 0;         // initget bits
  Keywords keywords;
  bool hasBase = false;  // base point (UCS) of a rubber band
  double base[3] = {0.0, 0.0, 0.0};
  bool spaces = false;   // a space belongs to the answer instead of ending it
};

// status: RTNORM with a value, RTNONE for Enter, RTKWORD for a keyword or
// arbitrary text (in text), RTCAN for cancel; RTERROR for a pick that
// found no object.
struct Answer {
  int status = 0;
  double point[3] = {0.0, 0.0, 0.0};  // points (UCS); the pick point of an entity
  double real = 0.0;                  // distances, reals, angles (radians)
  int integer = 0;
  std::wstring text;                  // strings and keywords
  std::int64_t name[2] = {0, 0};      // the picked entity (or a selection set)
  bool hasName = false;
  bool isSet = false;                 // name is a selection set given to a selection prompt
};

}  // namespace kelhost::editor
