// The in-place editor on its own: a window with an lsEdit over a "cell" and a button per mode.
// Every event the editor raises is printed, with its arguments, to the window's log and to
// standard output. In button mode the host's "dialog" is a simple input box.
//
//   edit_example            opens the window
//   edit_example --script   opens each mode, types into it as a person would, prints, and exits

#include "lsEdit.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>
#include <cstdio>

namespace {

class ExampleWindow : public QWidget {
public:
    explicit ExampleWindow(bool scripted) : m_scripted(scripted) {
        setWindowTitle("lsEdit example");
        auto *layout = new QVBoxLayout(this);
        auto *buttons = new QHBoxLayout;
        const std::pair<const char *, qint32> modes[] = {
            {"Text box", lsEditTextBox}, {"Combo box", lsEditComboBox}, {"Button", lsEditButton}};
        for (const auto &[title, mode] : modes) {
            auto *button = new QPushButton(title);
            connect(button, &QPushButton::clicked, this, [this, mode = mode] { open(mode); });
            buttons->addWidget(button);
        }
        layout->addLayout(buttons);
        m_cell = new QLabel("Value: \"Green\"");
        layout->addWidget(m_cell);
        // The editor floats over this area as it would over a grid's cell.
        m_area = new QWidget;
        m_area->setMinimumHeight(160);
        layout->addWidget(m_area);
        m_log = new QPlainTextEdit;
        m_log->setReadOnly(true);
        layout->addWidget(m_log);

        m_edit = new lsEdit(m_area);
        m_edit->InitProperties();
        m_edit->setValue("Green");
        for (const char *colour : {"Amber", "Blue", "Green", "Grey", "Red", "Violet"})
            m_edit->AddItem(colour);
        listen();
    }

    void open(qint32 mode) {
        m_edit->setGeometry(20, 40, 180, 22);
        m_edit->Edit(mode);
    }

    lsEdit *edit() const { return m_edit; }

private:
    void print(const QString &line) {
        m_log->appendPlainText(line);
        std::printf("%s\n", qPrintable(line));
        std::fflush(stdout);
    }

    void listen() {
        connect(m_edit, &lsEdit::BeforeEdit, [this](bool &) {
            print(QString("BeforeEdit (Mode %1)").arg(m_edit->Mode().toInt()));
        });
        connect(m_edit, &lsEdit::EditValidate,
                [this](QVariant &newValue, QVariant &oldValue, bool &) {
                    print(QString("EditValidate NewValue=\"%1\" OldValue=\"%2\"")
                              .arg(newValue.toString(), oldValue.toString()));
                });
        connect(m_edit, &lsEdit::AfterEdit,
                [this](QVariant &newValue, QVariant &oldValue, bool &changed) {
                    print(QString("AfterEdit NewValue=\"%1\" OldValue=\"%2\" Changed=%3")
                              .arg(newValue.toString(), oldValue.toString(),
                                   changed ? "True" : "False"));
                });
        connect(m_edit, &lsEdit::OnButtonClick, [this](qint32 &x, qint32 &y, QVariant &value) {
            print(QString("OnButtonClick Xpos=%1 Ypos=%2").arg(x).arg(y));
            // The host's own window decides the value; scripted, it answers by itself.
            if (m_scripted) {
                value = "Teal";
                return;
            }
            bool ok = false;
            const QString text = QInputDialog::getText(
                this, "Colour", "New colour:", QLineEdit::Normal, value.toString(), &ok);
            if (ok)
                value = text;
        });
        connect(m_edit, &lsEdit::OnClose, [this] {
            print("OnClose");
            m_cell->setText(QString("Value: \"%1\"").arg(m_edit->Value().toString()));
        });
    }

    bool m_scripted;
    QLabel *m_cell;
    QWidget *m_area;
    QPlainTextEdit *m_log;
    lsEdit *m_edit;
};

// Each mode once, typed into as a person would.
int runScript(ExampleWindow &window) {
    window.show();
    window.activateWindow();
    if (!QTest::qWaitForWindowActive(&window))
        return 1;
    lsEdit *edit = window.edit();
    std::printf("-- text box: type \"Olive\", Enter\n");
    window.open(lsEditTextBox);
    QTest::keyClicks(edit->txtEdit(), "Olive");
    QTest::keyClick(edit->txtEdit(), Qt::Key_Return);
    std::printf("-- combo box: type \"gr\", Down, Enter\n");
    window.open(lsEditComboBox);
    QTest::keyClicks(edit->txtEdit(), "gr");
    QTest::keyClick(edit->txtEdit(), Qt::Key_Down);
    QTest::keyClick(edit->lstEdit(), Qt::Key_Down);
    QTest::keyClick(edit->lstEdit(), Qt::Key_Return);
    std::printf("-- button: click the ellipsis\n");
    window.open(lsEditButton);
    QTest::mouseClick(edit->btnSelect(), Qt::LeftButton);
    std::printf("-- text box: type \"x\", Escape\n");
    window.open(lsEditTextBox);
    QTest::keyClicks(edit->txtEdit(), "x");
    QTest::keyClick(edit->txtEdit(), Qt::Key_Escape);
    std::printf("Value at the end: \"%s\"\n", qPrintable(edit->Value().toString()));
    return 0;
}

} // namespace

int main(int argc, char **argv) {
    QApplication app(argc, argv);
    const bool scripted = app.arguments().contains("--script");
    ExampleWindow window(scripted);
    if (scripted)
        return runScript(window);
    window.resize(420, 420);
    window.show();
    return app.exec();
}
