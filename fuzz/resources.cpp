// A module whose resources nobody vouches for.
#include "fuzz/fuzz_target.h"
#include "platform/base/module.h"
#include "platform/base/resource_file.h"

namespace {

template <class Image, class Pixels>
void RequireWhole(const Image& image, const Pixels& pixels) {
    Require(image.width >= 1 && image.height >= 1 &&
                pixels.size() ==
                    static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height),
            "an image has all its pixels");
}

} // namespace

void RunOnBytes(FuzzedBytes bytes) {
    const FuzzRun run;
    const auto all = bytes.Take(SIZE_MAX);
    const HINSTANCE__ module{all.data(), all.size()};
    for (u16 id = 0; id < 4; ++id) {
        if (const auto dialog = LoadDialogTemplate(&module, id)) {
            // An item takes 18 bytes or more.
            Require(dialog->items.size() <= all.size() / 18, "items are not made up");
        }
        if (const auto cursor = LoadCursorImage(&module, id)) {
            RequireWhole(*cursor, cursor->argb);
        }
        if (const auto bitmap = LoadBitmapImage(&module, id)) {
            RequireWhole(*bitmap, bitmap->rgb);
        }
    }
    for (u16 id = 0; id < 40; ++id) {
        if (const auto text = LoadStringResource(&module, id)) {
            Require(text->size() <= all.size() / 2, "a text is not made up");
        }
    }
}
