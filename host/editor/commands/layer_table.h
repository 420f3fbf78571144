// The drawing's layers as the LAYER command reads and changes them: name
// lists (several names separated by commas, wildcard patterns among
// them), new layers with the platform's defaults, and changes made under
// the usual open-change-close discipline.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "arx/dbsymtb.h"

namespace kelhost::editor {

// The items of a typed name list: split at commas, blanks around each
// removed, empty items dropped.
std::vector<std::wstring> SplitNameList(const std::wstring& text);
// Whether an item is a wildcard pattern (as acutWcMatch reads it) rather
// than a name.
bool IsNamePattern(const std::wstring& item);

// The layer of that name (without regard to case, erased ones excluded),
// or null.
AcDbObjectId FindLayer(AcDbDatabase* db, const std::wstring& name);
// The layers an item of a name list stands for, in table order: every
// layer a pattern matches, or the one layer a name names.
std::vector<AcDbObjectId> MatchLayers(AcDbDatabase* db, const std::wstring& item);
// Every live layer in table order.
std::vector<AcDbObjectId> AllLayers(AcDbDatabase* db);

std::wstring LayerName(AcDbObjectId layer);
// Whether a name may name a new layer (a valid symbol name).
bool IsValidLayerName(const std::wstring& name);

// A new layer as the platform makes one: on, thawed, unlocked, colour 7,
// linetype Continuous, lineweight Default, plotted. eDuplicateRecordName
// when the name is taken.
Acad::ErrorStatus AddLayer(AcDbDatabase* db, const std::wstring& name, AcDbObjectId& id);
// Opens the layer for write, lets change work on it, closes it.
Acad::ErrorStatus ChangeLayer(AcDbObjectId layer, const std::function<void(AcDbLayerTableRecord&)>& change);

// The colour's text as the command line shows it: "1 (red)" for the seven
// named colours, the number otherwise.
std::wstring ColorText(int index);
// A typed colour: 1-255 or one of the seven names (any case); 0 when the
// text is neither.
int ParseColor(const std::wstring& text);

// A lineweight as the command line shows it: "0.30mm", or "Default".
std::wstring LineWeightText(AcDb::LineWeight weight);
// A typed lineweight in millimetres (or "Default"), taken to the nearest
// standard weight; false for text that is neither or lies outside
// 0-2.11mm.
bool ParseLineWeight(const std::wstring& text, AcDb::LineWeight& weight);

}  // namespace kelhost::editor
