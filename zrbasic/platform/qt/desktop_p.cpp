#include <zrbasic/platform/qt/desktop_p.h>

#include <zrbasic/platform/foundation/url.h>
#include <zrbasic/platform/qt/conversions_p.h>

#include <QClipboard>
#include <QDesktopServices>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMimeData>
#include <QProcess>
#include <QUrl>

namespace zr::qt {

bool openAddress(NSURL* url) {
    // A URL has nothing but ASCII in it; Qt's strict parser would let other letters pass, and leave it to the helper
    // program what they mean.
    const QUrl address(url ? toQt(url->absoluteString()) : QString(), QUrl::StrictMode);
    return address.isValid() && !address.scheme().isEmpty() && QDesktopServices::openUrl(address);
}

bool launchProgram(NSString* path) {
    if (!path || path->length() == 0) {
        return false;
    }
    // Without a folder in it a name would be looked for along PATH.
    const QFileInfo file(toQt(path));
    return file.isFile() && file.isExecutable() && QProcess::startDetached(file.absoluteFilePath(), {});
}

Ref<NSString> textOfClipboard() {
    const QClipboard* const clipboard = QGuiApplication::clipboard();
    const QMimeData* const content = clipboard->mimeData();
    return content && content->hasText() ? fromQt(content->text()) : nullptr;
}

void putIntoClipboard(NSString* text) {
    QClipboard* const clipboard = QGuiApplication::clipboard();
    if (text) {
        clipboard->setText(toQt(text));
    } else {
        clipboard->clear();
    }
}

} // namespace zr::qt
