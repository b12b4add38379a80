#include "tests/support/leak_guard.h"
#include "tools/effect_table.h"
#include "tools/record_builder.h"
#include <zq/engine.h>

#include <set>

namespace {

constexpr i32 kWidth = 9;
constexpr i32 kHeight = 7;

constexpr ImageClass kClasses[] = {ImageClass::Colour, ImageClass::Grey, ImageClass::Palette8,
                                   ImageClass::Palette4, ImageClass::Mono};

class EffectTableTest : public LeakGuardTest {};

TEST_F(EffectTableTest, LeavesNoEffectOut) {
    std::array<i32, 100> record; // ones suit most effects
    record.fill(1);
    for (EffectId id = -1; id <= 100; ++id) {
        for (const ImageClass imageClass : kClasses) {
            const OwnedBlock source = MakeDib(imageClass, kWidth, kHeight);
            const OwnedBlock result(RunEffect(source.Handle(), id, record.data()));
            EXPECT_TRUE(!result || FindEffect(id) != nullptr) << id;
        }
    }
    EXPECT_EQ(EffectTable().size(), 45u);
}

TEST_F(EffectTableTest, SaysWhichPicturesAnEffectTakes) {
    for (const EffectDescription& effect : EffectTable()) {
        for (const ImageClass imageClass : kClasses) {
            const OwnedBlock source = MakeDib(imageClass, kWidth, kHeight);
            const OwnedBlock result(RunEffect(source.Handle(), effect.id, effect.defaults));
            EXPECT_EQ(static_cast<bool>(result), (effect.takes & ClassBit(imageClass)) != 0)
                << effect.name << ", image class " << static_cast<i32>(imageClass);
        }
    }
}

TEST_F(EffectTableTest, IsSortedAndNamesEachEffectOnce) {
    std::set<std::string> names;
    EffectId last = 0;
    for (const EffectDescription& effect : EffectTable()) {
        EXPECT_GT(effect.id, last) << effect.name;
        last = effect.id;
        const std::string name = effect.name;
        EXPECT_TRUE(names.insert(name).second) << name;
        EXPECT_EQ(name.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789-"), name.npos)
            << name;
        EXPECT_EQ(FindEffect(effect.id), &effect);
    }
}

TEST_F(EffectTableTest, CoversEachByteOfARecordOnce) {
    for (const EffectDescription& effect : EffectTable()) {
        std::set<std::size_t> taken;
        EXPECT_EQ(effect.parameters.empty(), effect.defaults == nullptr) << effect.name;
        std::vector<EffectParameter> fields(effect.parameters.begin(), effect.parameters.end());
        fields.insert(fields.end(), effect.otherFields.begin(), effect.otherFields.end());
        for (const EffectParameter& parameter : fields) {
            SCOPED_TRACE(std::string(effect.name) + " " + parameter.name);
            if (parameter.kind == ParameterKind::File) {
                continue;
            }
            const std::size_t width = parameter.kind == ParameterKind::Bytes ? 1 : 4;
            EXPECT_EQ(parameter.offset % 4, 0u);
            EXPECT_LE(parameter.offset + parameter.count * width, effect.recordBytes);
            for (std::size_t i = 0; i < parameter.count * width; ++i) {
                EXPECT_TRUE(taken.insert(parameter.offset + i).second);
            }
            const auto* record = static_cast<const u8*>(effect.defaults);
            for (std::size_t i = 0; i < parameter.count; ++i) {
                EXPECT_TRUE(Accepts(parameter, ParameterValue(parameter, record, i)));
            }
        }
        EXPECT_EQ(taken.size(), effect.recordBytes) << effect.name;
    }
}

// Both ends of each range, and each choice, on a picture that the effect takes.
TEST_F(EffectTableTest, OffersOnlyValuesThatTheEngineTakes) {
    for (const EffectDescription& effect : EffectTable()) {
        const bool colour = (effect.takes & ClassBit(ImageClass::Colour)) != 0;
        const OwnedBlock source =
            MakeDib(colour ? ImageClass::Colour : ImageClass::Grey, kWidth, kHeight);
        for (const EffectParameter& parameter : effect.parameters) {
            std::vector<std::string> values;
            if (parameter.kind == ParameterKind::Number ||
                parameter.kind == ParameterKind::Unsigned) {
                values = {std::to_string(parameter.smallest), std::to_string(parameter.largest)};
            }
            for (const ParameterChoice& choice : parameter.choices) {
                values.push_back(choice.name);
            }
            for (const std::string& value : values) {
                const std::string text = std::string(parameter.name) + "=" + value;
                Record record;
                std::string error;
                EXPECT_TRUE(BuildRecord(effect, {text}, record, error)) << error;
                EXPECT_TRUE(OwnedBlock(RunEffect(source.Handle(), effect.id, record.data())))
                    << effect.name << " " << text;
            }
        }
    }
}

} // namespace
