#include "windows/almanac_chooser.h"

#include <QFile>
#include <QFileDialog>

namespace nimbry::windows {

void choose_almanac(QWidget* parent, const std::string& folder, const std::function<void(const std::string&)>& chosen) {
    auto* dialog = new QFileDialog(parent, QStringLiteral("Monthly Summary"), QFile::decodeName(folder.c_str()),
                                   QStringLiteral("Almanacs (al*.csv)"));
    dialog->setObjectName(QStringLiteral("dlgAlMonth"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::ExistingFile);
    dialog->setDefaultSuffix(QStringLiteral("csv"));
    // A name that is proper UTF-8 is taken byte for byte, so the path goes as the disk has it.
    QObject::connect(dialog, &QFileDialog::fileSelected, dialog,
                     [chosen](const QString& path) { chosen(QFile::encodeName(path).toStdString()); });
    dialog->open();
}

}  // namespace nimbry::windows
