#include "host/document.h"

#include "image/dib.h"
#include "image/masked_effect.h"

namespace {

std::shared_ptr<const OwnedBlock> Share(OwnedBlock block) {
    return std::make_shared<const OwnedBlock>(std::move(block));
}

DibHandle HandleOf(const std::shared_ptr<const OwnedBlock>& pixels) {
    return pixels == nullptr ? 0 : pixels->Handle();
}

bool IsMaskOfSize(DibHandle mask, i32 width, i32 height) {
    i32 maskWidth = 0;
    i32 maskHeight = 0;
    return IsGreyPaletteDib(mask) != 0 && GetDibSize(mask, &maskWidth, &maskHeight) != 0 &&
           maskWidth == width && maskHeight == height;
}

} // namespace

HostDocument::HostDocument(u64 historyBytes)
    : historyBytes_(historyBytes), block_(AllocateBlock(sizeof(ImageDocument))) {}

DibHandle HostDocument::Image() const {
    return HandleOf(current_.image);
}

DibHandle HostDocument::Mask() const {
    return HandleOf(current_.mask);
}

bool HostDocument::SetPicture(OwnedBlock image, OwnedBlock mask) {
    i32 width = 0;
    i32 height = 0;
    if (!block_ || GetDibSize(image.Handle(), &width, &height) == 0 ||
        !IsMaskOfSize(mask.Handle(), width, height)) {
        return false;
    }
    width_ = width;
    height_ = height;
    grey_ = IsGreyPaletteDib(image.Handle()) != 0;
    history_.clear();
    Show({Share(std::move(image)), Share(std::move(mask))});
    MarkSaved();
    return true;
}

bool HostDocument::ApplyEffect(EffectId id, const void* record) {
    LayerEntry layer = {};
    layer.image = Image();
    layer.mask = Mask();
    if (ApplyEffectToLayer(&layer, id, record, 1, 0) == 0) {
        return false;
    }
    State next = current_;
    if (layer.image != Image()) {
        next.image = Share(OwnedBlock(layer.image));
    }
    if (layer.mask != Mask()) {
        next.mask = Share(OwnedBlock(layer.mask));
    }
    if (next == current_) {
        return false;
    }
    Step(next);
    return true;
}

bool HostDocument::SetMask(OwnedBlock mask) {
    if (IsEmpty() || !IsMaskOfSize(mask.Handle(), width_, height_)) {
        return false;
    }
    Step({current_.image, Share(std::move(mask))});
    return true;
}

bool HostDocument::Undo() {
    if (history_.empty()) {
        return false;
    }
    Show(history_.back());
    history_.pop_back();
    return true;
}

void HostDocument::Step(const State& next) {
    history_.push_back(current_);
    Show(next);
    DropOldest();
}

void HostDocument::Show(const State& state) {
    current_ = state;
    const BlockLock lock(block_.Handle());
    auto* record = reinterpret_cast<ImageDocument*>(lock.Bytes());
    record->width = width_;
    record->height = height_;
    record->bitDepth = grey_ ? 8 : 24;
    record->layerCount = 1;
    record->layers[0].image = Image();
    record->layers[0].mask = Mask();
}

void HostDocument::DropOldest() {
    u64 bytes = 0;
    const State* newer = &current_;
    for (std::size_t i = history_.size(); i-- > 0; newer = &history_[i]) {
        const State& state = history_[i];
        bytes += state.image != newer->image ? BlockSize(HandleOf(state.image)) : 0;
        bytes += state.mask != newer->mask ? BlockSize(HandleOf(state.mask)) : 0;
        if (bytes > historyBytes_ && i + 1 < history_.size()) {
            history_.erase(history_.begin(), history_.begin() + static_cast<std::ptrdiff_t>(i) + 1);
            return;
        }
    }
}
