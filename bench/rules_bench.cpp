// The portable parts, natively, by Google Benchmark: the time of one call for growing input.
#include "automation/late.h"
#include "automation/text.h"
#include "folder/file_name.h"
#include "folder/naming_rule.h"
#include "grid/model/grid_objects.h"
#include "grid/model/rows_as_text.h"
#include "tests/fakes/fake_culture.h"
#include "workbench/host/field_text.h"
#include "workbench/host/mime_reader.h"

#include <benchmark/benchmark.h>

using namespace talvix;

namespace {

constexpr const char16_t* kKeys[] = {u"ID", u"Subject", u"Status", u"Date", u"Path"};

std::shared_ptr<grid::GridModel> Filled(const Culture& culture, std::int64_t rows) {
    const auto model = std::make_shared<grid::GridModel>(culture);
    const Late object(Value(std::make_shared<grid::GridObject>(model)));
    for (const auto* key : kKeys) {
        object[u"Columns"].Call(u"Add", key);
    }
    const Late all = object[u"Rows"];
    for (std::int64_t number = 0; number < rows; ++number) {
        const Late row = all[u"Add"];
        const std::u16string part = DecimalText(number * 7919 % 1000003);
        row.SetAt(u"Value", u"ID", static_cast<std::int32_t>(number));
        row.SetAt(u"Value", u"Subject", u"Bericht Bauabschnitt " + part);
        row.SetAt(u"Value", u"Status", number % 3 == 0 ? u"offen" : u"erledigt");
        row.SetAt(u"Value", u"Date", Date{36000 + static_cast<double>(number % 5000)});
        row.SetAt(u"Value", u"Path", u"\\\\server\\daten\\4711\\" + part + u".doc");
    }
    return model;
}

void GridFill(benchmark::State& state) {
    const FakeCulture culture;
    for (auto _ : state) {
        benchmark::DoNotOptimize(Filled(culture, state.range(0)));
    }
    state.SetComplexityN(state.range(0));
}

void GridSort(benchmark::State& state) {
    const FakeCulture culture;
    const Late object(Value(std::make_shared<grid::GridObject>(Filled(culture, state.range(0)))));
    std::int32_t order = 0;
    for (auto _ : state) {
        object.Call(u"Sort", u"Subject", order = 1 - order);
    }
    state.SetComplexityN(state.range(0));
}

void GridGroup(benchmark::State& state) {
    const FakeCulture culture;
    const Late object(Value(std::make_shared<grid::GridObject>(Filled(culture, state.range(0)))));
    for (auto _ : state) {
        object[u"Groups"].Call(u"Add", u"Status");
        object[u"Groups"].Call(u"Clear");
    }
    state.SetComplexityN(state.range(0));
}

void GridFind(benchmark::State& state) {
    const FakeCulture culture;
    const Late object(Value(std::make_shared<grid::GridObject>(Filled(culture, state.range(0)))));
    std::int64_t number = 0;
    for (auto _ : state) {
        number = (number + 7919) % state.range(0);
        benchmark::DoNotOptimize(object.Call(u"Find", u"ID", static_cast<std::int32_t>(number)));
    }
}

void GridSaveAndLoadText(benchmark::State& state) {
    const FakeCulture culture;
    const auto model = Filled(culture, state.range(0));
    for (auto _ : state) {
        const std::u16string text = grid::SaveRows(*model, u";");
        const auto read = Filled(culture, 0);
        grid::LoadRows(*read, text, u";");
    }
    state.SetComplexityN(state.range(0));
}

void MailWithAttachment(benchmark::State& state) {
    std::string mail = "From: a@b.de\r\nSubject: =?utf-8?Q?Pl=C3=A4ne?=\r\nMIME-Version: 1.0\r\n"
                       "Content-Type: multipart/mixed; boundary=x\r\n\r\n--x\r\n\r\nText\r\n--x\r\n"
                       "Content-Disposition: attachment; filename=plan.pdf\r\n"
                       "Content-Transfer-Encoding: base64\r\n\r\n";
    for (std::int64_t line = 0; line < state.range(0) / 57; ++line) {
        mail += std::string(76, 'Q') + "\r\n";
    }
    mail += "--x--\r\n";
    for (auto _ : state) {
        benchmark::DoNotOptimize(host::ReadMime(mail));
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
    state.SetComplexityN(state.range(0));
}

void FieldText(benchmark::State& state) {
    const std::u16string text(static_cast<std::size_t>(state.range(0)), u'ä');
    for (auto _ : state) {
        benchmark::DoNotOptimize(host::UnescapeText(host::EscapeText(text)));
    }
    state.SetComplexityN(state.range(0));
}

void NamingRule(benchmark::State& state) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(FillNamingRule(u"P:\\Projekte\\<Projektnummer>\\<Projektname>",
                                                [](ProjectText) { return u"Neubau Süd: 3. BA"; }));
    }
}

void FileName(benchmark::State& state) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(IsPlainFileName(u"Bericht über den Bauabschnitt 3.doc"));
    }
}

} // namespace

BENCHMARK(GridFill)->RangeMultiplier(10)->Range(1000, 100000)->Complexity();
BENCHMARK(GridSort)->RangeMultiplier(10)->Range(1000, 100000)->Complexity();
BENCHMARK(GridGroup)->RangeMultiplier(10)->Range(1000, 100000)->Complexity();
BENCHMARK(GridFind)->RangeMultiplier(10)->Range(1000, 100000);
BENCHMARK(GridSaveAndLoadText)->RangeMultiplier(10)->Range(1000, 100000)->Complexity();
BENCHMARK(MailWithAttachment)->RangeMultiplier(10)->Range(10000, 10000000)->Complexity();
BENCHMARK(FieldText)->RangeMultiplier(10)->Range(1000, 100000)->Complexity();
BENCHMARK(NamingRule);
BENCHMARK(FileName);
