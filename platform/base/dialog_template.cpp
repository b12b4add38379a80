#include "platform/base/byte_reader.h"
#include "platform/base/resource_file.h"

#include <array>

namespace {

constexpr u16 kExtendedVersion = 1;
constexpr u16 kExtendedSignature = 0xFFFF;
constexpr u16 kFirstClassNumber = 0x80;
constexpr std::array<const char*, 6> kClassNames = {"Button",  "Edit",      "Static",
                                                    "ListBox", "ScrollBar", "ComboBox"};

std::string ReadClassName(ByteReader& reader) {
    if (!reader.SkipOrdinalMark()) {
        return reader.TerminatedText();
    }
    const u16 number = reader.U16();
    const auto index = static_cast<std::size_t>(number - kFirstClassNumber);
    return number >= kFirstClassNumber && index < kClassNames.size() ? kClassNames[index] : "";
}

// A number in place of a text names a picture or a menu, which no dialog here has.
std::string ReadText(ByteReader& reader) {
    if (!reader.SkipOrdinalMark()) {
        return reader.TerminatedText();
    }
    reader.U16();
    return {};
}

template <class Template>
void ReadPlace(ByteReader& reader, Template& target) {
    target.x = reader.I16();
    target.y = reader.I16();
    target.width = reader.I16();
    target.height = reader.I16();
}

void ReadFont(ByteReader& reader, bool extended, DialogTemplate& dialog) {
    if ((dialog.style & DS_SETFONT) == 0) {
        return;
    }
    dialog.fontPoints = reader.U16();
    if (extended) {
        reader.U32(); // weight, slant and character set
    }
    dialog.fontFace = reader.TerminatedText();
}

DialogItemTemplate ReadItem(ByteReader& reader, bool extended) {
    DialogItemTemplate item{};
    reader.Align4();
    if (extended) {
        reader.U32(); // help id
        item.exStyle = reader.U32();
        item.style = reader.U32();
    } else {
        item.style = reader.U32();
        item.exStyle = reader.U32();
    }
    ReadPlace(reader, item);
    item.id = reader.U16();
    if (extended) {
        reader.U16(); // ids are kept in 16 bits, as the plain template has them
    }
    item.className = ReadClassName(reader);
    item.text = ReadText(reader);
    reader.Take(reader.U16()); // creation data
    return item;
}

} // namespace

std::optional<DialogTemplate> LoadDialogTemplate(HINSTANCE module, u16 id) {
    const auto bytes = FindResourceBytes(module, kResourceDialog, id);
    ByteReader reader(bytes);
    const u16 version = reader.U16();
    const bool extended = reader.U16() == kExtendedSignature && version == kExtendedVersion;

    DialogTemplate dialog{};
    if (extended) {
        reader.U32(); // help id
        dialog.exStyle = reader.U32();
        dialog.style = reader.U32();
    } else {
        reader = ByteReader(bytes);
        dialog.style = reader.U32();
        dialog.exStyle = reader.U32();
    }
    const u16 count = reader.U16();
    ReadPlace(reader, dialog);
    ReadText(reader); // menu
    ReadText(reader); // class
    dialog.title = reader.TerminatedText();
    ReadFont(reader, extended, dialog);
    while (dialog.items.size() < count && !reader.Failed()) {
        dialog.items.push_back(ReadItem(reader, extended));
    }
    if (reader.Failed()) {
        return std::nullopt;
    }
    return dialog;
}
