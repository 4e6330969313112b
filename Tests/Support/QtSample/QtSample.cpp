// SPDX-License-Identifier: MIT
#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextEdit>
#include <QVBoxLayout>

/// Shows the file that is named on the command line in a rich text, and fixed texts in the other
/// kinds of field.
int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QFile file(application.arguments().value(1));
    if (!file.open(QIODevice::ReadOnly)) {
        return 2;
    }
    QFont font(QStringLiteral("Noto Sans CJK SC"));
    font.setPixelSize(20);
    QApplication::setFont(font);
    QWidget window;
    window.setWindowTitle(QStringLiteral("Qt sample"));
    auto* layout = new QVBoxLayout(&window);
    auto* rich = new QTextEdit;
    rich->setPlainText(QString::fromUtf8(file.readAll()));
    layout->addWidget(rich, 5);
    auto* plain = new QPlainTextEdit(QStringLiteral("纯文本里😀　田　汉字\n第二行"));
    layout->addWidget(plain, 1);
    layout->addWidget(new QLineEdit(QStringLiteral("输入框里😀　由　词典")));
    layout->addWidget(new QLabel(QStringLiteral("标签里的词典")));
    layout->addWidget(new QPushButton(QStringLiteral("按钮词典")));
    window.show();
    return application.exec();
}
