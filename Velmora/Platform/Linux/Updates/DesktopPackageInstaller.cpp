// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/Updates/DesktopPackageInstaller.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSaveFile>
#include <utility>

namespace velmora {
namespace {

/// The folders that only package managers write to. A program that was unpacked or built by hand
/// lives in a home folder, under /opt or under /usr/local.
bool liesInPackagedFolder(const QString& path) {
    const bool isLocal = path.startsWith(u"/usr/local/");
    const bool isSystem = path.startsWith(u"/usr/") || path.startsWith(u"/bin/") ||
                          path.startsWith(u"/app/") || path.startsWith(u"/snap/") ||
                          path.startsWith(u"/nix/store/");
    return isSystem && !isLocal;
}

}  // namespace

DesktopPackageInstaller::DesktopPackageInstaller(std::string executable, std::string cacheFolder,
                                                 std::string openCommand)
    : executable_(std::move(executable)),
      cacheFolder_(std::move(cacheFolder)),
      openCommand_(std::move(openCommand)) {}

bool DesktopPackageInstaller::isOwnedByPackageManager() const {
    if (!isOwned_) {
        const QString path = QFileInfo(QString::fromStdString(executable_)).canonicalFilePath();
        isOwned_ = liesInPackagedFolder(path);
    }
    return *isOwned_;
}

std::string DesktopPackageInstaller::install(const std::string& package,
                                             const std::string& fileName) {
    const QString folder = QString::fromStdString(cacheFolder_);
    if (folder.isEmpty() || !QDir().mkpath(folder)) {
        return "The package could not be stored in " + cacheFolder_ + ".";
    }
    // Of the packages before nobody has any more need.
    for (const QString& old : QDir(folder).entryList(QDir::Files | QDir::Hidden)) {
        QFile::remove(QDir(folder).filePath(old));
    }
    QSaveFile file(QDir(folder).filePath(QString::fromStdString(fileName)));
    const bool isStored = file.open(QIODevice::WriteOnly) &&
                          file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner) &&
                          file.write(package.data(), static_cast<qint64>(package.size())) ==
                              static_cast<qint64>(package.size()) &&
                          file.commit();
    if (!isStored) {
        return "The package could not be stored: " + file.errorString().toStdString() + ".";
    }
    if (!QProcess::startDetached(QString::fromStdString(openCommand_), {file.fileName()})) {
        return "The package is stored as " + file.fileName().toStdString() +
               ", but no installer could be started (" + openCommand_ + " is missing).";
    }
    return {};
}

}  // namespace velmora
