// LAYER (and -LAYER): the command-line form. It shows the current layer,
// then asks for an option again and again until Enter. Name lists take
// several names separated by commas; lists that change layers take
// wildcard patterns too. The headless editor offers every option but
// transparency, materials, layer states, descriptions and reconciling,
// which it says it does not offer.
//
// Where the platform's wording could not be confirmed, the messages are
// worded as the platform's other layer messages are: "Cannot find layer",
// the refusal to freeze the current layer and the question before turning
// it off follow the platform; the refusal to make a frozen layer current,
// "already exists", "Invalid layer name." and the unknown linetype's
// message are this editor's.
#include <algorithm>

#include "ads/entity_names.h"
#include "arx/dbdatabase.h"
#include "db/stub.h"
#include "editor/builtin_commands.h"
#include "editor/commands/layer_table.h"
#include "editor/commands/typed_text.h"
#include "kelhost/text.h"

namespace kelhost::editor {
namespace {

const wchar_t kOptionPrompt[] =
    L"\nEnter an option "
    L"[?/Make/Set/New/Rename/ON/OFF/Color/Ltype/LWeight/TRansparency/MATerial/Plot/Freeze/Thaw/LOck/Unlock/stAte/"
    L"Description/rEconcile]: ";
const wchar_t kOptionKeywords[] =
    L"? Make Set New Rename ON OFF Color Ltype LWeight TRansparency MATerial Plot Freeze Thaw LOck Unlock stAte "
    L"Description rEconcile";

std::wstring Quoted(const std::wstring& s) { return L"\"" + s + L"\""; }

std::wstring Padded(std::wstring s, size_t width) {
  if (s.size() < width) s.append(width - s.size(), L' ');
  return s + L" ";
}

class LayerCommand {
 public:
  explicit LayerCommand(CommandContext& c) : c(c), dwg(ads::WorkingDb()) {}

  void run() {
    if (!dwg) c.fail();
    c.print(L"\nCurrent layer:  " + Quoted(LayerName(dwg->clayer())));
    for (;;) {
      Answer a = c.askKeyword(kOptionPrompt, kOptionKeywords);
      if (a.status != RTKWORD) return;  // Enter ends the command
      const std::wstring& o = a.text;
      if (o == L"?") list();
      else if (o == L"Make") make();
      else if (o == L"Set") set();
      else if (o == L"New") addNew();
      else if (o == L"Rename") rename();
      else if (o == L"ON") turnOn();
      else if (o == L"OFF") turnOff();
      else if (o == L"Color") color();
      else if (o == L"Ltype") linetype();
      else if (o == L"LWeight") lineweight();
      else if (o == L"Plot") plot();
      else if (o == L"Freeze") freeze();
      else if (o == L"Thaw") change(L"\nEnter name list of layer(s) to thaw: ", false, [](auto& l) { l.setIsFrozen(false); });
      else if (o == L"LOck")
        change(L"\nEnter name list of layer(s) to lock or <select objects>: ", true, [](auto& l) { l.setIsLocked(true); });
      else if (o == L"Unlock")
        change(L"\nEnter name list of layer(s) to unlock or <select objects>: ", true,
               [](auto& l) { l.setIsLocked(false); });
      else c.print(L"\nThe headless editor does not offer this option.");
    }
  }

 private:
  std::wstring current() const { return LayerName(dwg->clayer()); }

  std::wstring askText(const std::wstring& prompt) { return c.askString(prompt).text; }

  // The layers an answer names, each item that names none reported.
  std::vector<AcDbObjectId> layersNamed(const std::wstring& text) {
    std::vector<AcDbObjectId> layers;
    for (const std::wstring& item : SplitNameList(text)) {
      const std::vector<AcDbObjectId> found = MatchLayers(dwg, item);
      if (found.empty()) c.print(L"\nCannot find layer " + Quoted(item) + L".");
      for (const AcDbObjectId& id : found)
        if (std::find(layers.begin(), layers.end(), id) == layers.end()) layers.push_back(id);
    }
    return layers;
  }

  // The layers of the objects the user selects.
  std::vector<AcDbObjectId> layersSelected() {
    std::vector<AcDbObjectId> layers;
    for (const AcDbObjectId& id : c.selectObjects()) {
      auto* e = db::PeekAs<AcDbEntity>(id);
      if (e && std::find(layers.begin(), layers.end(), e->layerId()) == layers.end()) layers.push_back(e->layerId());
    }
    return layers;
  }

  // A name-list prompt: Enter selects objects (orSelect), means the
  // current layer (a prompt with it as default), or names nothing.
  enum class OnEnter { kNothing, kSelect, kCurrent };
  std::vector<AcDbObjectId> askLayers(const std::wstring& prompt, OnEnter onEnter) {
    const std::wstring text = askText(prompt);
    if (!SplitNameList(text).empty()) return layersNamed(text);
    if (onEnter == OnEnter::kSelect) return layersSelected();
    if (onEnter == OnEnter::kCurrent) return {dwg->clayer()};
    return {};
  }

  template <class Fn>
  void change(const std::wstring& prompt, bool orSelect, Fn fn) {
    for (const AcDbObjectId& id : askLayers(prompt, orSelect ? OnEnter::kSelect : OnEnter::kNothing))
      ChangeLayer(id, fn);
  }

  // Makes a layer current; an off layer is turned on, a frozen one refused.
  void makeCurrent(AcDbObjectId id) {
    auto* layer = db::PeekAs<AcDbLayerTableRecord>(id);
    if (!layer) return;
    if (layer->isFrozen()) {
      c.print(L"\nCannot make layer " + LayerName(id) + L" current.  It is frozen.");
      return;
    }
    if (layer->isOff()) ChangeLayer(id, [](AcDbLayerTableRecord& l) { l.setIsOff(false); });
    dwg->setClayer(id);
  }

  void list() {
    std::wstring pattern = askText(L"\nEnter layer name(s) to list <*>: ");
    if (SplitNameList(pattern).empty()) pattern = L"*";
    std::vector<AcDbObjectId> layers;
    for (const std::wstring& item : SplitNameList(pattern))
      for (const AcDbObjectId& id : MatchLayers(dwg, item))
        if (std::find(layers.begin(), layers.end(), id) == layers.end()) layers.push_back(id);
    std::sort(layers.begin(), layers.end(),
              [](AcDbObjectId a, AcDbObjectId b) { return CompareNoCase(LayerName(a), LayerName(b)) < 0; });
    c.print(L"\n\n" + Padded(L"Layer name", 31) + Padded(L"State", 22) + Padded(L"Color", 11) +
            Padded(L"Linetype", 20) + L"Lineweight");
    for (const AcDbObjectId& id : layers) {
      auto* l = db::PeekAs<AcDbLayerTableRecord>(id);
      std::wstring state = l->isOff() ? L"Off" : L"On";
      if (l->isFrozen()) state += L" Frozen";
      if (l->isLocked()) state += L" Locked";
      if (!l->isPlottable()) state += L" No plot";
      auto* lt = db::PeekAs<AcDbSymbolTableRecord>(l->linetypeObjectId());
      c.print(L"\n" + Padded(l->getName(), 31) + Padded(state, 22) + Padded(ColorText(l->colorIndex()), 11) +
              Padded(lt ? lt->getName() : L"", 20) + LineWeightText(l->lineWeight()));
    }
    if (layers.empty()) c.print(L"\nNo matching layer names found.");
    c.print(L"\n\nCurrent layer:  " + Quoted(current()));
  }

  void make() {
    std::wstring name = Trimmed(askText(L"\nEnter name for new layer (becomes the current layer) <" + current() + L">: "));
    if (name.empty()) name = current();
    AcDbObjectId id = FindLayer(dwg, name);
    if (id.isNull()) {
      if (!IsValidLayerName(name)) return c.print(L"\nInvalid layer name.");
      if (AddLayer(dwg, name, id) != Acad::eOk) return;
    }
    makeCurrent(id);
  }

  void set() {
    const std::wstring name = Trimmed(askText(L"\nEnter layer name to make current or <select object>: "));
    if (name.empty()) {
      Answer a = c.askEntity(L"\nSelect object: ");
      if (a.status == RTNORM && a.hasName)
        if (auto* e = db::PeekAs<AcDbEntity>(ads::IdOfName(a.name))) makeCurrent(e->layerId());
      return;
    }
    const AcDbObjectId id = FindLayer(dwg, name);
    if (id.isNull()) return c.print(L"\nCannot find layer " + Quoted(name) + L".");
    makeCurrent(id);
  }

  void addNew() {
    for (const std::wstring& name : SplitNameList(askText(L"\nEnter name list for new layer(s): "))) {
      AcDbObjectId id;
      if (!FindLayer(dwg, name).isNull()) c.print(L"\nLayer " + Quoted(name) + L" already exists.");
      else if (!IsValidLayerName(name)) c.print(L"\nInvalid layer name.");
      else AddLayer(dwg, name, id);
    }
  }

  void rename() {
    const std::wstring from = Trimmed(askText(L"\nEnter old layer name: "));
    if (from.empty()) return;
    const AcDbObjectId id = FindLayer(dwg, from);
    if (id.isNull()) return c.print(L"\nCannot find layer " + Quoted(from) + L".");
    const std::wstring to = Trimmed(askText(L"\nEnter new layer name: "));
    if (to.empty()) return;
    if (id == dwg->layerZero()) return c.print(L"\nCannot rename layer 0.");
    if (!IsValidLayerName(to)) return c.print(L"\nInvalid layer name.");
    const AcDbObjectId other = FindLayer(dwg, to);
    if (!other.isNull() && other != id) return c.print(L"\nLayer " + Quoted(to) + L" already exists.");
    ChangeLayer(id, [&to](AcDbLayerTableRecord& l) { l.setName(to.c_str()); });
  }

  void turnOn() {
    for (const AcDbObjectId& id : askLayers(L"\nEnter name list of layer(s) to turn On: ", OnEnter::kNothing))
      ChangeLayer(id, [](AcDbLayerTableRecord& l) { l.setIsOff(false); });
  }

  // The current layer is turned off only when the user says so.
  void turnOff() {
    for (const AcDbObjectId& id :
         askLayers(L"\nEnter name list of layer(s) to turn Off or <select objects>: ", OnEnter::kSelect)) {
      if (id == dwg->clayer()) {
        Answer a = c.askKeyword(L"\nReally want layer " + LayerName(id) + L" (the CURRENT layer) off? <N> ", L"Yes No");
        if (!(a.status == RTKWORD && a.text == L"Yes")) continue;
      }
      ChangeLayer(id, [](AcDbLayerTableRecord& l) { l.setIsOff(true); });
    }
  }

  // The current layer cannot be frozen.
  void freeze() {
    for (const AcDbObjectId& id :
         askLayers(L"\nEnter name list of layer(s) to freeze or <select objects>: ", OnEnter::kSelect)) {
      if (id == dwg->clayer()) {
        c.print(L"\nCannot freeze layer " + LayerName(id) + L".  It is the CURRENT layer.");
        continue;
      }
      ChangeLayer(id, [](AcDbLayerTableRecord& l) { l.setIsFrozen(true); });
    }
  }

  // A colour (a minus sign before it turns the layers off), then the
  // layers that take it; they are turned on unless it had the sign.
  void color() {
    int index = 0;
    bool off = false;
    for (;;) {
      Answer a = c.askKeyword(L"\nNew color [Truecolor/COlorbook] : ", L"Truecolor COlorbook", kArbitrary);
      std::wstring text = Trimmed(a.text);
      if (text.empty()) return;
      if (a.text == L"Truecolor" || a.text == L"COlorbook") {
        c.print(L"\nThe headless editor offers index colors only.");
        continue;
      }
      off = text[0] == L'-';
      index = ParseColor(off ? text.substr(1) : text);
      if (index) break;
      c.print(L"\nColor must be a number from 1 to 255 or a color name.");
    }
    const std::wstring prompt =
        L"\nEnter name list of layer(s) for color " + ColorText(index) + L" <" + current() + L">: ";
    for (const AcDbObjectId& id : askLayers(prompt, OnEnter::kCurrent))
      ChangeLayer(id, [index, off](AcDbLayerTableRecord& l) {
        l.setColorIndex(static_cast<Adesk::Int16>(index));
        l.setIsOff(off);
      });
  }

  void linetype() {
    auto* table = db::PeekAs<AcDbLinetypeTable>(dwg->linetypeTableId());
    AcDbObjectId linetype;
    for (;;) {
      std::wstring name = Trimmed(askText(L"\nEnter a loaded linetype name or [?] <Continuous>: "));
      if (name.empty()) name = L"Continuous";
      if (name == L"?") {
        listLinetypes();
        continue;
      }
      if (!table || table->getAt(name.c_str(), linetype) != Acad::eOk) {
        return c.print(L"\nLinetype " + name + L" not found.  Use LINETYPE command to load it.");
      }
      break;
    }
    const std::wstring prompt = L"\nEnter name list of layer(s) for linetype " + Quoted(LayerLinetypeName(linetype)) +
                                L" <" + current() + L">: ";
    for (const AcDbObjectId& id : askLayers(prompt, OnEnter::kCurrent))
      ChangeLayer(id, [linetype](AcDbLayerTableRecord& l) { l.setLinetypeObjectId(linetype); });
  }

  static std::wstring LayerLinetypeName(AcDbObjectId id) {
    auto* record = db::PeekAs<AcDbSymbolTableRecord>(id);
    return record ? record->getName() : L"";
  }

  void listLinetypes() {
    auto* table = db::PeekAs<AcDbLinetypeTable>(dwg->linetypeTableId());
    AcDbSymbolTableIterator* it = nullptr;
    if (!table || table->newIterator(it) != Acad::eOk) return;
    c.print(L"\n\n" + Padded(L"Linetype name", 31) + L"Description");
    for (; !it->done(); it->step()) {
      AcDbObjectId id;
      it->getRecordId(id);
      auto* lt = db::PeekAs<AcDbLinetypeTableRecord>(id);
      if (lt) c.print(L"\n" + Padded(lt->getName(), 31) + lt->commentsConst());
    }
    delete it;
    c.print(L"\n");
  }

  void lineweight() {
    AcDb::LineWeight weight = AcDb::kLnWtByLwDefault;
    for (;;) {
      const std::wstring text = Trimmed(askText(L"\nEnter lineweight (0.0mm - 2.11mm): "));
      if (text.empty()) return;
      if (ParseLineWeight(text, weight)) break;
      c.print(L"\nValue must be between 0.0mm and 2.11mm.");
    }
    const std::wstring prompt =
        L"\nEnter name list of layers(s) for lineweight " + LineWeightText(weight) + L" <" + current() + L">: ";
    for (const AcDbObjectId& id : askLayers(prompt, OnEnter::kCurrent))
      ChangeLayer(id, [weight](AcDbLayerTableRecord& l) { l.setLineWeight(weight); });
  }

  void plot() {
    Answer a = c.askKeyword(L"\nEnter a plotting preference [Plot/No plot] <Plot>: ", L"Plot No");
    const bool plotted = !(a.status == RTKWORD && a.text == L"No");
    const std::wstring prompt = L"\nEnter layer name(s) for this plot preference <" + current() + L">: ";
    for (const AcDbObjectId& id : askLayers(prompt, OnEnter::kCurrent))
      ChangeLayer(id, [plotted](AcDbLayerTableRecord& l) { l.setIsPlottable(plotted); });
  }

  CommandContext& c;
  AcDbDatabase* dwg;
};

void RunLayer(CommandContext& c) { LayerCommand(c).run(); }

}  // namespace

// The platform runs LAYER transparently too ('LAYER inside another command).
KELHOST_BUILTIN_COMMAND(Layer, {L"LAYER", RunLayer, /*hasDialog*/ true, /*transparent*/ true});

}  // namespace kelhost::editor
