#include "image/dib.h"
#include "image/masked_effect.h"
#include "pictures/layer_files.h"
#include "tools/commands.h"
#include "tools/progress_bar.h"
#include "tools/record_builder.h"
#include "tools/stop_signals.h"
#include "tools/words.h"

#include <algorithm>
#include <cstdio>
#include <zq/engine.h>

namespace {

// The picture files of one run and what was read from them.
struct Pictures {
    OwnedBlock image;
    OwnedBlock alpha; // of the picture's file; passed on as it is
    OwnedBlock mask;
};

bool ComplainAbout(const std::string& path, PictureResult result) {
    Complain(Concat({path, ": ", DescribePictureResult(result)}));
    return false;
}

bool CheckOutputName(const std::string& path) {
    return HasPictureExtension(path.c_str()) ||
           ComplainAbout(path, PictureResult::UnknownExtension);
}

std::string SizeText(DibHandle dib) {
    i32 width = 0;
    i32 height = 0;
    GetDibSize(dib, &width, &height);
    return std::to_string(width) + " x " + std::to_string(height);
}

bool ReadPictures(const CommandLine& commandLine, Pictures& pictures) {
    DibHandle image = 0;
    DibHandle alpha = 0;
    PictureResult result = ReadPicture(commandLine.input.c_str(), image, &alpha);
    pictures.image = OwnedBlock(image);
    pictures.alpha = OwnedBlock(alpha);
    if (result != PictureResult::Ok) {
        return ComplainAbout(commandLine.input, result);
    }
    if (commandLine.mask.empty()) {
        return true;
    }
    result = ReadMask(commandLine.mask.c_str(), pictures.mask);
    if (result != PictureResult::Ok) {
        return ComplainAbout(commandLine.mask, result);
    }
    const std::string imageSize = SizeText(image);
    const std::string maskSize = SizeText(pictures.mask.Handle());
    if (imageSize != maskSize) {
        Complain(commandLine.mask + ": the mask has " + maskSize + " pixels, the picture " +
                 imageSize);
        return false;
    }
    return true;
}

// The layer's two pictures become new ones. False when the effect gave none.
bool RunOnLayer(Pictures& pictures, EffectId id, const void* params) {
    LayerEntry layer = {};
    layer.image = pictures.image.Handle();
    layer.mask = pictures.mask.Handle();
    ApplyEffectToLayer(&layer, id, params, 1, 0);
    if (layer.image == pictures.image.Handle()) {
        return false;
    }
    pictures.image = OwnedBlock(layer.image);
    if (layer.mask != pictures.mask.Handle()) {
        pictures.mask = OwnedBlock(layer.mask);
    }
    return true;
}

bool RunPlainly(Pictures& pictures, EffectId id, const void* params) {
    OwnedBlock result(RunEffect(pictures.image.Handle(), id, params));
    if (!result) {
        return false;
    }
    pictures.image = std::move(result);
    return true;
}

// Why the effect gave no picture, as far as it can be told from outside.
std::string ReasonForNoPicture(const EffectDescription& effect, const Record& record,
                               DibHandle image) {
    const auto imageClass = static_cast<ImageClass>(ClassifyDib(image));
    if ((effect.takes & ClassBit(imageClass)) == 0) {
        return Concat({effect.name, " takes ", DescribeClasses(effect.takes),
                       ", but this is one of the ", DescribeClasses(ClassBit(imageClass))});
    }
    bool allZero = true;
    std::string refused;
    for (const EffectParameter& parameter : effect.parameters) {
        for (std::size_t i = 0; i < parameter.count && parameter.kind != ParameterKind::File; ++i) {
            const i64 value = ParameterValue(parameter, record.data(), i);
            allZero &= value == 0 || parameter.kind == ParameterKind::Choice;
            if (refused.empty() && !Accepts(parameter, value)) {
                refused = Concat({parameter.name, " is ", std::to_string(value),
                                  ", but it must be ", DescribeRange(parameter)});
            }
        }
    }
    const bool changesNothing = (effect.id == 1 || effect.id == 2) && allZero;
    return changesNothing     ? "these parameters change nothing"
           : !refused.empty() ? refused
                              : "there is probably not enough memory";
}

bool Write(const std::string& path, DibHandle dib, DibHandle alpha) {
    const PictureResult result = WritePicture(path.c_str(), dib, alpha);
    return result == PictureResult::Ok || ComplainAbout(path, result);
}

} // namespace

int RunOnFiles(const CommandLine& commandLine) {
    const EffectDescription& effect = *commandLine.effect;
    Record record;
    std::string error;
    const bool built = commandLine.hasRecord
                           ? ParseRecord(effect, commandLine.record, record, error)
                           : BuildRecord(effect, commandLine.assignments, record, error);
    if (!built) {
        Complain(error);
        return kWrongUsage;
    }
    const bool keepsMask = !commandLine.maskOutput.empty();
    if (!CheckOutputName(commandLine.output) ||
        (keepsMask && !CheckOutputName(commandLine.maskOutput))) {
        return kWrongUsage;
    }
    CatchStopSignals();
    Pictures pictures;
    if (!ReadPictures(commandLine, pictures)) {
        return kWrongUsage;
    }
    bool done = false;
    {
        const ProgressBar bar;
        done = pictures.mask ? RunOnLayer(pictures, effect.id, record.data())
                             : RunPlainly(pictures, effect.id, record.data());
    }
    if (StopRequested()) {
        Complain("stopped");
        return kStopped;
    }
    if (!done) {
        Complain(commandLine.output +
                 " is not written: " + ReasonForNoPicture(effect, record, pictures.image.Handle()));
        return kNoPicture;
    }
    const WritingGuard guard;
    const bool written =
        (!keepsMask || Write(commandLine.maskOutput, pictures.mask.Handle(), 0)) &&
        Write(commandLine.output, pictures.image.Handle(), pictures.alpha.Handle());
    return written ? kDone : kWrongUsage;
}
