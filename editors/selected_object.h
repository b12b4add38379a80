// Guards for drawing objects: what was selected is put back, what was made is deleted.
#pragma once

#include "platform/win32.h"

// A drawing object that is deleted at the end of the scope.
class OwnedObject {
public:
    explicit OwnedObject(HGDIOBJ object) : object_(object) {}
    ~OwnedObject() {
        if (object_ != nullptr) {
            DeleteObject(object_);
        }
    }
    OwnedObject(const OwnedObject&) = delete;
    OwnedObject& operator=(const OwnedObject&) = delete;

    HGDIOBJ Get() const { return object_; }

private:
    HGDIOBJ object_;
};

// A drawing object that is selected until the end of the scope; null changes nothing.
class SelectedObject {
public:
    SelectedObject(HDC dc, HGDIOBJ object)
        : dc_(dc), before_(object == nullptr ? nullptr : SelectObject(dc, object)) {}
    ~SelectedObject() {
        if (before_ != nullptr) {
            SelectObject(dc_, before_);
        }
    }
    SelectedObject(const SelectedObject&) = delete;
    SelectedObject& operator=(const SelectedObject&) = delete;

private:
    HDC dc_;
    HGDIOBJ before_;
};

// A pen of one pixel, made, selected and deleted.
class ThinPen {
public:
    ThinPen(HDC dc, COLORREF color)
        : pen_(CreatePen(PS_SOLID, 1, color)), selected_(dc, pen_.Get()) {}

private:
    OwnedObject pen_;
    SelectedObject selected_;
};
