// The control's persisted properties through the JSON property bag and Qt's meta-object system.

#include "ErrorOf.h"
#include "TreeListFixture.h"
#include "lsEdit.h"

#include <QJsonDocument>
#include <QMetaProperty>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <functional>

namespace {

using PropertyBagTest = TreeListFixture;

PropertyBag bagOf(const QString &json) {
    PropertyBag bag;
    EXPECT_TRUE(bag.fromJson(json.toUtf8())) << json.toStdString();
    return bag;
}

TEST_F(PropertyBagTest, DefaultsWriteNothingAndEveryKeyRoundTripsThroughAFile) {
    PropertyBag bag;
    list->WriteProperties(bag);
    EXPECT_EQ(bag.count(), 0) << QJsonDocument(bag.json()).toJson().toStdString();
    vkTreeList loaded(nullptr, host.get());
    loaded.ReadProperties(bag);
    EXPECT_EQ(
        std::tuple(loaded.Headers(), loaded.headers()->Count(), loaded.HeaderCell(lslcData, 1, 1)),
        std::tuple(list->Headers(), 1, list->HeaderCell(lslcData, 1, 1)));

    // Every persisted key but the default column width is a property of the same name: a host
    // (or a form) puts them by name. The font goes through a QFont, the image list through the
    // name the host gave it.
    auto images = std::make_shared<lsImageList>();
    host->registerImageList("icons", images);
    QFont font("DejaVu Serif");
    font.setPointSizeF(11);
    font.setItalic(true);
    // clang-format off
    const std::pair<const char *, QVariant> puts[] = {
        {"AutoRedraw", false}, {"Columns", 3}, {"EditMode", lsEditComboBox},
        {"FocusType", lsSelectFullRow}, {"Headers", 2}, {"RowHeight", 22}, {"Enabled", false},
        {"Appearance", lsAppFlat}, {"BackColor", 0x00C0FFEEu}, {"Font", font},
        {"ForeColor", 0x00112233u}, {"ImageList", "icons"}, {"LineStyle", lsLineDotted},
        {"MultiSelect", true}, {"AutoSelectNew", false}, {"ExpandOnDoubleClick", false},
        {"ComponentVersion", "9.99.9999"}, {"KeyboardSearch", true}, {"ShowTips", true},
        {"SelectionMode", lsSelectionExtended}};
    // clang-format on
    for (const auto &[key, value] : puts) {
        const QMetaProperty property =
            list->metaObject()->property(list->metaObject()->indexOfProperty(key));
        QSignalSpy notified(list.get(), property.notifySignal());
        EXPECT_TRUE(property.write(list.get(), value)) << key;
        EXPECT_EQ(notified.count(), 1) << key;
    }
    EXPECT_EQ(std::tuple(list->Font()->Name(), list->Font()->Size(), list->Font()->Italic()),
              std::tuple(QStringLiteral("DejaVu Serif"), 11.0, true));

    QTemporaryDir dir;
    const QString path = dir.filePath("layout.json");
    PropertyBag saved;
    list->WriteProperties(saved);
    ASSERT_TRUE(saved.save(path));
    EXPECT_EQ(saved.count(), 19); // all but ColumnWidth and ComponentVersion, left at defaults
    ASSERT_TRUE(bag.load(path));
    loaded.ReadProperties(bag);
    // Writing the loaded control again gives the same bag, so every key reached its field; the
    // spot checks make sure the values were applied and not just carried.
    EXPECT_EQ(std::tuple(loaded.HeaderCell(lslcData, 2, 3).toString(), loaded.Enabled(),
                         loaded.Font()->Italic(), loaded.ImageList(), loaded.BackColor()),
              std::tuple(QStringLiteral("Header3"), false, true, images, 0x00C0FFEEu));
    PropertyBag again;
    loaded.WriteProperties(again);
    EXPECT_EQ(again.json(), saved.json());
    list->setProperty("ImageList", "unknown");
    EXPECT_EQ(list->ImageList(), nullptr);
}

TEST_F(PropertyBagTest, ALoadGivesEveryHeaderAndDataRowTheLoadedColumns) {
    // Whatever the control held before: new, loaded before, filled with rows.
    const auto layout = [](qint32 columns, qint32 headers) {
        return bagOf(QStringLiteral(R"({"Columns": %1, "Headers": %2})").arg(columns).arg(headers));
    };
    const std::function<void()> before[] = {[] {}, [&] { list->ReadProperties(layout(5, 3)); },
                                            [&] {
                                                list->setColumns(3);
                                                addFlatRows(10);
                                            }};
    const std::pair<qint32, qint16> loads[] = {{3, 2}, {1, 3}, {6, 0}, {2, 1}};
    for (size_t b = 0; b < std::size(before); ++b)
        for (const auto &[columns, headers] : loads) {
            SCOPED_TRACE(testing::Message() << "before " << b << ", " << columns << " columns, "
                                            << headers << " header rows");
            makeControl(true);
            before[b]();
            list->ReadProperties(layout(columns, headers));
            EXPECT_EQ(std::tuple(list->Columns(), list->Headers()), std::tuple(columns, headers));
            for (lsNodes *nodes : {list->rows(), list->headers()})
                for (const lsNodePtr &row : *nodes)
                    ASSERT_EQ(row->borrowCells().Count(), columns);
            if (list->Rows() + headers == 0)
                continue;
            for (qint32 c = 1; c <= columns; ++c)
                EXPECT_GT(list->ColumnWidth(c), 0) << c;
            list->setColumnWidth(columns, 1500);
            EXPECT_EQ(list->ColumnWidth(columns), 1500);
        }
}

TEST_F(PropertyBagTest, BadInputFailsCleanlyNamesItsSourceAndLosesNothing) {
    QTemporaryDir dir;
    const QString path = dir.filePath("layout.json"), bad = dir.filePath("bad.json"),
                  huge = dir.filePath("huge.json");
    PropertyBag good = bagOf(R"({"RowHeight": 20})");
    ASSERT_TRUE(good.save(path));
    for (const auto &[file, text] : {std::pair{bad, "{ \"RowHeight\": 20,"},
                                     {huge, R"({"RowHeight": 20, "Columns": 2000000000})"}}) {
        QFile out(file);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly) && out.write(text) > 0);
    }

    // A malformed file leaves the bag as it was; a save that cannot be done, the old file.
    PropertyBag bag = good;
    QString error;
    EXPECT_FALSE(bag.load(bad, &error));
    EXPECT_FALSE(error.isEmpty());
    EXPECT_EQ(bag.json(), good.json());
    EXPECT_FALSE(good.save(dir.filePath("missing/dir/layout.json")));
    ASSERT_TRUE(bag.load(path));
    EXPECT_EQ(bag.json(), good.json());

    // Values of the wrong type fail the load with type mismatch; too large ones overflow. (That a
    // failed load leaves the control as it was the properties fuzz target checks on every
    // input.)
    using E = TreeListError;
    // clang-format off
    const std::pair<const char *, int> cases[] = {
        {R"({"RowHeight": "tall"})", E::TypeMismatch}, {R"({"AutoRedraw": 1})", E::TypeMismatch},
        {R"({"Columns": 2.5})", E::TypeMismatch}, {R"({"Font": 12})", E::TypeMismatch},
        {R"({"Font": {"Name": "DejaVu Sans", "Size": "big"}})", E::TypeMismatch},
        {R"({"Headers": 40000})", E::Overflow}, {R"({"Columns": 2000000000})", E::Overflow},
        {R"({"Headers": 30000, "Columns": 30000})", E::OutOfMemory}};
    // clang-format on
    for (const auto &[json, error] : cases)
        EXPECT_EQ(errorOf([&] { list->ReadProperties(bagOf(json)); }), error) << json;

    // The error names the file, when there is one, and the property.
    const std::pair<QString, QString> named[] = {
        {huge, huge + R"(: "Columns": Overflow)"},
        {R"({"RowHeight": "tall"})", R"("RowHeight": Type mismatch)"},
        {R"({"Font": {"Size": "big"}})", R"("Font": Type mismatch)"}};
    for (const auto &[source, text] : named) {
        PropertyBag from;
        ASSERT_TRUE(source.startsWith('{') ? from.fromJson(source.toUtf8()) : from.load(source));
        try {
            list->ReadProperties(from);
            ADD_FAILURE() << "loaded " << source.toStdString();
        } catch (const TreeListError &e) {
            EXPECT_EQ(e.description(), text);
        }
    }
}

TEST_F(PropertyBagTest, WideValuesKeepTheirBitsAndNarrowPutsFailLoudly) {
    // Enumerated properties are 32-bit and stored as given; the file keeps every bit, and a
    // value whose low 16 bits equal the default is not mistaken for it.
    const struct Wide {
        const char *key;
        void (vkTreeList::*put)(qint32);
        qint32 (vkTreeList::*get)() const;
        qint32 value;
    } wide[] = {
        {"EditMode", &vkTreeList::setEditMode, &vkTreeList::EditMode, 70000},
        {"LineStyle", &vkTreeList::setLineStyle, &vkTreeList::LineStyle, 65537},
        {"FocusType", &vkTreeList::setFocusType, &vkTreeList::FocusType, -70000},
    };
    for (const Wide &w : wide)
        (list.get()->*w.put)(w.value);
    PropertyBag bag;
    list->WriteProperties(bag);
    vkTreeList loaded(nullptr, host.get());
    loaded.ReadProperties(bag);
    for (const Wide &w : wide) {
        EXPECT_EQ(bag.json().value(w.key).toDouble(), w.value) << w.key;
        EXPECT_EQ((loaded.*w.get)(), w.value) << w.key;
    }

    // Colours load from the signed and the unsigned form of the same 32 bits.
    for (const char *json : {R"({"BackColor": -2147483643, "ForeColor": 2147483656})",
                             R"({"BackColor": 2147483653, "ForeColor": -2147483640})"}) {
        loaded.ReadProperties(bagOf(json));
        EXPECT_EQ(std::tuple(loaded.BackColor(), loaded.ForeColor()),
                  std::tuple(0x80000005u, 0x80000008u))
            << json;
    }

    // Puts of 16-bit values take the host's 32 bits and fail before anything changes.
    recordChanges();
    const std::function<void()> narrow[] = {
        [&] { list->setHeaders(40000); }, [&] { list->setColumns(40000); },
        [&] { list->setHeaders(-32769); }, [&] { list->setAppearance(70000); },
        [&] { list->setScaleMode(32768); }};
    for (size_t i = 0; i < std::size(narrow); ++i)
        EXPECT_EQ(errorOf(narrow[i]), TreeListError::Overflow) << "put " << i;
    EXPECT_TRUE(changed.isEmpty());
    EXPECT_EQ(std::tuple(list->Headers(), list->Columns(), list->Appearance(), list->ScaleMode()),
              std::tuple(qint16(1), 1, lsApp3D, qint16(1)));

    // Enabled is the control's own state: a disabled parent neither changes nor notifies it.
    QWidget parent;
    vkTreeList child(&parent, host.get());
    child.InitProperties();
    recordChanges(&child);
    parent.setEnabled(false);
    EXPECT_TRUE(child.Enabled());
    PropertyBag saved;
    child.WriteProperties(saved);
    EXPECT_FALSE(saved.contains("Enabled"));
    child.setEnabled(false);
    parent.setEnabled(true);
    EXPECT_FALSE(child.Enabled());
    child.WriteProperties(saved);
    EXPECT_FALSE(saved.json().value("Enabled").toBool(true));
    EXPECT_EQ(changed, QStringList({"Enabled"}));
}

TEST_F(PropertyBagTest, PutsNotifyWithTheBagKeyAndRepaintOnlyWhereTheyShould) {
    recordChanges();
    addFlatRows(2);

    // RowHeight takes 16..255 only, silently.
    for (int h : {15, 256, -1})
        list->setRowHeight(h);
    EXPECT_EQ(list->RowHeight(), 18);
    EXPECT_TRUE(changed.isEmpty());
    list->setRowHeight(16);
    list->setRowHeight(255);
    EXPECT_EQ(list->RowHeight(), 255);
    EXPECT_EQ(changed, QStringList({"RowHeight", "RowHeight"}));

    // BackColor does not repaint: the composed frame keeps the old background.
    list->setRowHeight(18);
    const auto corner = [&] { return frame().pixel(frame().width() - 5, frame().height() - 5); };
    const QRgb oldBack = corner();
    list->setBackColor(0x000000FF);
    EXPECT_EQ(corner(), oldBack);
    list->Refresh();
    EXPECT_EQ(corner(), qRgb(255, 0, 0));

    // AutoRedraw off keeps the frame; turning it on repaints at once.
    changed.clear();
    list->setAutoRedraw(false);
    list->setListCell(lslcData, 1, 1, "Changed");
    const QImage frozen = frame();
    list->setBackColor(0x0000FF00);
    list->Refresh();
    EXPECT_EQ(frame(), frozen);
    list->setAutoRedraw(true);
    EXPECT_NE(frame(), frozen);
    EXPECT_EQ(changed, QStringList({"AutoRedraw", "BackColor", "AutoRedraw"}));
}

TEST_F(PropertyBagTest, MethodsAndTheEditorsValueWorkByName) {
    bool cleared = true;
    ASSERT_TRUE(QMetaObject::invokeMethod(list.get(), "AddItem"));
    ASSERT_TRUE(QMetaObject::invokeMethod(list.get(), "setListCell", Q_ARG(qint32, lslcData),
                                          Q_ARG(qint32, 1), Q_ARG(qint32, 1),
                                          Q_ARG(QVariant, QStringLiteral("by name"))));
    EXPECT_EQ(list->ListCell(lslcData, 1, 1), "by name");
    ASSERT_TRUE(QMetaObject::invokeMethod(list.get(), "Clear", Q_RETURN_ARG(bool, cleared)));
    EXPECT_EQ(std::tuple(cleared, list->Rows()), std::tuple(false, 0));

    lsEdit editor;
    QSignalSpy valueChanged(&editor, &lsEdit::ValueChanged);
    editor.setProperty("Value", QStringLiteral("Green"));
    EXPECT_EQ(std::tuple(editor.Value().toString(), valueChanged.count()),
              std::tuple(QString("Green"), qsizetype(1)));
    EXPECT_TRUE(editor.property("Mode").isValid());
}

} // namespace
