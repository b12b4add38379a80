#include "platform/base/resource_file.h"
#include "platform/qt/graphics.h"
#include "platform/types.h"

#include <QCoreApplication>
#include <QPixmap>
#include <QThread>

#include <deque>
#include <optional>

namespace {

struct SystemCursor {
    u16 id;
    Qt::CursorShape shape;
};

constexpr SystemCursor kSystemCursors[] = {
    {32512, Qt::ArrowCursor},     {32513, Qt::IBeamCursor},     {32514, Qt::WaitCursor},
    {32515, Qt::CrossCursor},     {32516, Qt::UpArrowCursor},   {32642, Qt::SizeFDiagCursor},
    {32643, Qt::SizeBDiagCursor}, {32644, Qt::SizeHorCursor},   {32645, Qt::SizeVerCursor},
    {32646, Qt::SizeAllCursor},   {32648, Qt::ForbiddenCursor}, {32649, Qt::PointingHandCursor},
    {32650, Qt::BusyCursor},
};

// A cursor that was asked for; asking again gives the same handle.
struct LoadedCursor {
    HINSTANCE module;
    u16 id;
    Qt::CursorShape shape; // of a system cursor
    CursorImage image;     // of a module's
};

// Cursors are never freed; a handle is the address of one of them.
std::deque<LoadedCursor>& Cursors() {
    static auto* cursors = new std::deque<LoadedCursor>;
    return *cursors;
}

const LoadedCursor* FindCursor(HCURSOR handle) {
    for (const LoadedCursor& cursor : Cursors()) {
        if (reinterpret_cast<HCURSOR>(const_cast<LoadedCursor*>(&cursor)) == handle) {
            return &cursor;
        }
    }
    return nullptr;
}

std::optional<LoadedCursor> ReadCursor(HINSTANCE module, u16 id) {
    if (module != nullptr) {
        auto image = LoadCursorImage(module, id);
        if (!image) {
            return std::nullopt;
        }
        return LoadedCursor{module, id, Qt::BitmapCursor, std::move(*image)};
    }
    for (const SystemCursor& cursor : kSystemCursors) {
        if (cursor.id == id) {
            return LoadedCursor{nullptr, id, cursor.shape, {}};
        }
    }
    return std::nullopt;
}

bool IsOtherThread() {
    const auto* application = QCoreApplication::instance();
    return application != nullptr && application->thread() != QThread::currentThread();
}

} // namespace

HCURSOR LoadCursorHandle(HINSTANCE instance, LPCSTR name) {
    const auto number = reinterpret_cast<std::uintptr_t>(name);
    if (number > 0xFFFF || IsOtherThread()) {
        return nullptr;
    }
    const auto id = static_cast<u16>(number);
    for (LoadedCursor& cursor : Cursors()) {
        if (cursor.module == instance && cursor.id == id) {
            return reinterpret_cast<HCURSOR>(&cursor);
        }
    }
    auto cursor = ReadCursor(instance, id);
    if (!cursor) {
        return nullptr;
    }
    return reinterpret_cast<HCURSOR>(&Cursors().emplace_back(std::move(*cursor)));
}

QCursor CursorOfHandle(HCURSOR cursor) {
    const LoadedCursor* found = FindCursor(cursor);
    if (found == nullptr) {
        return QCursor(Qt::ArrowCursor);
    }
    if (found->module == nullptr) {
        return QCursor(found->shape);
    }
    const CursorImage& image = found->image;
    const QImage pixels(reinterpret_cast<const uchar*>(image.argb.data()), image.width,
                        image.height, QImage::Format_ARGB32);
    return QCursor(QPixmap::fromImage(pixels), image.hotX, image.hotY);
}
