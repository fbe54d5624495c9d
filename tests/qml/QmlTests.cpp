#include "ui/history/HistoryModule.h"
#include "ui/style/SymbolProvider.h"

#include <QObject>
#include <QQmlEngine>
#include <QtQuickTest>

/// Makes the program's QML modules known to the tests.
class Setup : public QObject
{
    Q_OBJECT

public Q_SLOTS:
    void qmlEngineAvailable(QQmlEngine *engine)
    {
        registerHistoryModule();
        engine->addImportPath(QStringLiteral("qrc:/qt/qml"));
        installSymbols(*engine);
    }
};

QUICK_TEST_MAIN_WITH_SETUP(qml_tests, Setup)

#include "QmlTests.moc"
