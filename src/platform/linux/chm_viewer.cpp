#include "platform/chm_viewer.h"

#include <QProcess>
#include <QStandardPaths>
#include <QStringList>

#include <algorithm>
#include <array>

namespace {

/// A desktop that does not answer by then is taken for one without a viewer.
constexpr int kQueryTimeoutMs = 2000;

/// Viewers that may be installed without being known to the desktop.
constexpr std::array<const char*, 4> kViewers{"xchm", "kchmviewer", "uchmviewer", "gnochm"};

bool desktopHasViewer() {
    const QString xdgMime = QStandardPaths::findExecutable(QStringLiteral("xdg-mime"));
    if (xdgMime.isEmpty())
        return false;
    QProcess query;
    query.start(xdgMime, {QStringLiteral("query"), QStringLiteral("default"),
                          QStringLiteral("application/vnd.ms-htmlhelp")});
    if (!query.waitForFinished(kQueryTimeoutMs)) {
        query.kill();
        query.waitForFinished();
        return false;
    }
    return query.exitCode() == 0 && !query.readAllStandardOutput().trimmed().isEmpty();
}

/// The viewer runs on, whatever becomes of the program; what it writes is not the program's.
bool start(const QString& program, const QString& file) {
    QProcess viewer;
    viewer.setProgram(QStandardPaths::findExecutable(program));
    viewer.setArguments({file});
    viewer.setStandardOutputFile(QProcess::nullDevice());
    viewer.setStandardErrorFile(QProcess::nullDevice());
    return !viewer.program().isEmpty() && viewer.startDetached();
}

}  // namespace

bool openChm(const QString& file) {
    if (desktopHasViewer() && start(QStringLiteral("xdg-open"), file))
        return true;
    return std::any_of(kViewers.begin(), kViewers.end(), [&file](const char* viewer) {
        return start(QString::fromUtf8(viewer), file);
    });
}
