// acedTextBox as the module calls it to fit text: a mixed Chinese and
// Latin string measured again and again with warm glyph caches. A style
// with a shape font and a big font that this machine does not have, so
// both substitutes (Latin and CJK) take part, and a TrueType style.
#include <benchmark/benchmark.h>

#include <memory>

#include "arx/arxheaders.h"

namespace {

class StyledDrawing {
 public:
  StyledDrawing() : mDb(new AcDbDatabase(true, false)) {
    acdbHostApplicationServices()->setWorkingDatabase(mDb.get());
    AddStyle(L"HZ", L"gbenor.shx", L"gbcbig.shx");
    AddStyle(L"TT", L"DejaVuSans.ttf", L"");
  }

 private:
  void AddStyle(const wchar_t* name, const wchar_t* font, const wchar_t* big) {
    AcDbTextStyleTable* table = nullptr;
    if (mDb->getTextStyleTable(table, AcDb::kForWrite) != Acad::eOk) return;
    auto* record = new AcDbTextStyleTableRecord;
    record->setName(name);
    record->setFileName(font);
    record->setBigFontFileName(big);
    AcDbObjectId id;
    if (table->add(id, record) == Acad::eOk) record->close();
    else delete record;
    table->close();
  }
  std::unique_ptr<AcDbDatabase> mDb;
};

void MeasureMixed(benchmark::State& state, const wchar_t* style) {
  static StyledDrawing drawing;
  // Twenty characters: ten Chinese, ten Latin.
  resbuf* list = acutBuildList(1, L"钢筋混凝土梁板柱墙体 C30 L=2.5", 7, style, 40, 3.5, 0);
  ads_point lowerLeft, upperRight;
  acedTextBox(list, lowerLeft, upperRight);  // warms the caches
  for (auto _ : state) {
    benchmark::DoNotOptimize(acedTextBox(list, lowerLeft, upperRight));
    benchmark::DoNotOptimize(upperRight[0]);
  }
  state.SetItemsProcessed(state.iterations());
  acutRelRb(list);
}

void BM_TextBoxMixedBigFont(benchmark::State& state) { MeasureMixed(state, L"HZ"); }
void BM_TextBoxMixedTrueType(benchmark::State& state) { MeasureMixed(state, L"TT"); }

BENCHMARK(BM_TextBoxMixedBigFont);
BENCHMARK(BM_TextBoxMixedTrueType);

}  // namespace
