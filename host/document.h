// The host's picture: a document of one layer, and the states that Undo goes back to.
#pragma once

#include "engine/block.h"

#include <zq/document.h>

#include <deque>
#include <memory>

// What the states that Undo goes back to may hold, in bytes; the last one stays in any case.
constexpr u64 kUsualHistoryBytes = u64{1} << 30;

class HostDocument {
public:
    explicit HostDocument(u64 historyBytes = kUsualHistoryBytes);

    // The record that the library works on; 0 when there was no memory for it. Its one layer has no
    // DIBs before the first SetPicture.
    DocHandle Handle() const { return block_.Handle(); }
    bool IsEmpty() const { return current_.image == nullptr; }
    DibHandle Image() const;
    DibHandle Mask() const;
    i32 Width() const { return width_; }
    i32 Height() const { return height_; }
    bool IsGrey() const { return grey_; }

    // Starts over with a picture and a mask of its size. False with nothing changed for others.
    bool SetPicture(OwnedBlock image, OwnedBlock mask);

    // Each of these is one step for Undo, and false when nothing changed.
    bool ApplyEffect(EffectId id, const void* record);
    bool SetMask(OwnedBlock mask);

    bool CanUndo() const { return !history_.empty(); }
    bool Undo();

    // Whether the picture is another than at the last SetPicture or MarkSaved.
    bool IsModified() const { return current_ != saved_; }
    void MarkSaved() { saved_ = current_; }

private:
    // States that have a DIB in common share it.
    using Pixels = std::shared_ptr<const OwnedBlock>;
    struct State {
        Pixels image;
        Pixels mask;
        bool operator==(const State&) const = default;
    };

    void Step(const State& next);
    void Show(const State& state);
    void DropOldest();

    u64 historyBytes_;
    OwnedBlock block_;
    State current_;
    State saved_;
    std::deque<State> history_; // oldest first
    i32 width_ = 0;
    i32 height_ = 0;
    bool grey_ = false;
};
