// zqhost, a small image editor that uses the library.
#include "host/main_window.h"
#include "host/options.h"
#include "host/shots.h"

#include <QApplication>
#include <QFile>
#include <QTimer>

#include <cstdio>
#include <cstdlib>

namespace {

constexpr int kWrongUsage = 2;

bool HasDisplay() {
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
        const char* value = std::getenv(name);
        if (value != nullptr && *value != '\0') {
            return true;
        }
    }
    return false;
}

// Drops what the platform without a display says about itself at every start.
void WithoutChatter(QtMsgType, const QMessageLogContext&, const QString& message) {
    if (!message.startsWith("This plugin does not support") &&
        !message.startsWith("QStandardPaths: XDG_RUNTIME_DIR not set")) {
        std::fprintf(stderr, "%s\n", qPrintable(message));
    }
}

int Complain(const QString& what, const char* reason) {
    std::fprintf(stderr, "zqhost: %s: %s\n", qPrintable(what), reason);
    return kWrongUsage;
}

// Beside the program where it was built, in a folder of its own where it is installed.
QString SamplePicture() {
    const QString programs = QApplication::applicationDirPath();
    const QString built = programs + "/samples/coffee.png";
    return QFile::exists(built) ? built : programs + "/" ZQ_INSTALLED_SAMPLES "/coffee.png";
}

QString FileToOpen(const HostOptions& options) {
    if (options.file.empty() && (options.effect != 0 || !options.shots.empty())) {
        return SamplePicture();
    }
    return QFile::decodeName(options.file.c_str());
}

int Run(QApplication& application, const HostOptions& options) {
    MainWindow window;
    window.show();
    const bool alone = !options.shots.empty() || QApplication::platformName() == "offscreen";
    const QString file = FileToOpen(options);
    if (!file.isEmpty() && alone) {
        const PictureResult result = window.Open(file);
        if (result != PictureResult::Ok) {
            return Complain(file, DescribePictureResult(result));
        }
    } else if (!file.isEmpty()) {
        window.OpenOrExplain(file);
    }
    if (!options.shots.empty()) {
        return MakeShots(window, QFile::decodeName(options.shots.c_str()), options.effect) ? 0 : 1;
    }
    if (options.effect != 0) {
        QTimer::singleShot(0, &window, [&] { window.RunOffer(*FindEffectOffer(options.effect)); });
    }
    return application.exec();
}

} // namespace

int main(int argc, char** argv) {
    HostOptions options;
    std::string error;
    if (!ParseOptions(argc, argv, options, error)) {
        std::fprintf(stderr, "zqhost: %s\n%s", error.c_str(), kHostUsage);
        return kWrongUsage;
    }
    if (options.help) {
        std::fputs(kHostUsage, stdout);
        return 0;
    }
    if (!HasDisplay()) {
        if (options.shots.empty()) {
            std::fputs("zqhost: there is no display; --shots DIR works without one\n", stderr);
            return kWrongUsage;
        }
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
    }
    if (!options.shots.empty()) {
        qInstallMessageHandler(WithoutChatter);
    }
    int onlyName = 1; // the options are ours, not Qt's
    QApplication application(onlyName, argv);
    return Run(application, options);
}
