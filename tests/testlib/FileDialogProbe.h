#pragma once

#include <QByteArray>
#include <QFileDialog>
#include <QString>
#include <QStringList>

#include <functional>

/**
 * Runs a call that opens a file dialog, from a fresh temporary current
 * folder, rejects the dialog and tells what it offered and what the call
 * left behind.
 *
 *     const auto probe = FileDialogProbe::run([&] { done = manager->exportData(); });
 *     QCOMPARE(probe.title, "Export JSON file");
 */
struct FileDialogProbe
{
    bool caught = false;
    QString title;
    QStringList filters;
    QFileDialog::FileMode mode = QFileDialog::AnyFile;
    QString folder;      ///< the folder the dialog opened in
    QString startFolder; ///< the current folder during the call
    QByteArray cerr;     ///< what the call wrote to std::cerr
    QStringList files;   ///< files in the current folder after the call

    static FileDialogProbe run(const std::function<void()>& call);
};
