// Lets random pixels sink through brighter ones.
//
// A pixel sinks in its column, and where pixels are drawn does not depend on their tones. So all
// are drawn beforehand, and the picture is worked on column by column, in the order of the draws.
#include "engine/artistic/artistic_kernels.h"
#include "engine/artistic/drawn_rows.h"
#include "engine/artistic/word_columns.h"

#include <cstring>

namespace {

// Words that are compared at once.
constexpr i32 kCompared = 16;

// The pixel at row y of a column falls as long as the one below is at least as bright; those that
// it passes rise by one. It never reaches row 0.
template <class Format>
void Sink(typename Format::Word* column, i32 y) {
    const auto sinking = column[y];
    const auto least = Format::Least(sinking);
    i32 place = y;
    while (place > kCompared) {
        const auto* const below = column + place - kCompared;
        i32 differences = 0; // below 0 when one of them is
        for (i32 i = 0; i < kCompared; ++i) {
            differences |= below[i] - least;
        }
        if (differences < 0) {
            break;
        }
        place -= kCompared;
    }
    while (place >= 2 && column[place - 1] >= least) {
        --place;
    }
    if (place < y) {
        std::memmove(column + place + 1, column + place,
                     static_cast<std::size_t>(y - place) * sizeof sinking);
        column[place] = sinking;
    }
}

// Sinks the rows that are drawn in column `x`, which is the `column`.
template <class Format>
bool SinkInColumn(const DrawnRows& drawn, std::size_t x, i32 width, typename Format::Word* column,
                  MeltingQuestions& questions) {
    constexpr std::size_t kAtOnce = 64;
    const u16* const rows = drawn.Of(x);
    const std::size_t count = drawn.CountOf(x);
    std::size_t sunk = 0;
    do {
        if (!questions.AskForColumn(static_cast<i64>(x), width, static_cast<i64>(sunk),
                                    static_cast<i64>(count))) {
            return false;
        }
        for (const std::size_t end = std::min(count, sunk + kAtOnce); sunk < end; ++sunk) {
            Sink<Format>(column, rows[sunk]);
        }
    } while (sunk < count);
    return true;
}

template <class Format>
bool MeltColumns(const KernelRun& run, const WordColumns<Format>& columns, const DrawnRows& drawn,
                 MeltingQuestions& questions) {
    const DibView& picture = run.source;
    const auto width = static_cast<std::size_t>(picture.width);
    for (std::size_t left = 0; left < width; left += kStripColumns) {
        const std::size_t count = std::min(kStripColumns, width - left);
        FillColumns(picture, left, count, columns);
        for (std::size_t i = 0; i < count; ++i) {
            if (!SinkInColumn<Format>(drawn, left + i, picture.width, columns.Column(i),
                                      questions)) {
                return false;
            }
        }
        WriteColumns(columns, run, left, count);
    }
    return questions.AskAll();
}

template <class Format>
WorkEnd Melt(const KernelRun& run, i32 intensity) {
    using Word = typename Format::Word;
    const DibView& picture = run.source;
    const i64 count = i64{picture.width} * picture.height / 100 * intensity;
    const std::size_t each = ColumnWords<Word>(picture.height);
    const BlockTable<Word> words(u64{each} * kStripColumns);
    DrawnRows drawn(picture, count);
    if (!words || !drawn) {
        return WorkEnd::NoMemory;
    }
    run.CopyHead();
    MeltingQuestions questions(run, count);
    const bool done =
        drawn.Draw(questions) &&
        MeltColumns(run, WordColumns<Format>{words.Entries(), each}, drawn, questions);
    SkipRandom(2 * static_cast<std::size_t>(questions.Asked()));
    if (!done) {
        return WorkEnd::Stopped;
    }
    for (i32 y = 0; y < picture.height; ++y) {
        std::memcpy(run.ResultRow(y) + picture.rowBytes, picture.Row(y) + picture.rowBytes,
                    picture.stride - picture.rowBytes);
    }
    return WorkEnd::Done;
}

} // namespace

DibHandle Melting(DibHandle source, i32 intensity) {
    if (intensity < 1 || intensity > 100) {
        return 0;
    }
    return RunKernel(source, Depths::GreyOrColour, [&](const KernelRun& run) {
        return run.source.bits == 24 ? Melt<ColourWord>(run, intensity)
                                     : Melt<GreyWord>(run, intensity);
    });
}
