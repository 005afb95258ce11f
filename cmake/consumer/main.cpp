#include <logger.h>
#include <vcore.h>
#include <vsettings.h>
#include <vsortfilterproxymodel.h>

#include <QApplication>
#include <QStandardItemModel>

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QStandardItemModel model(2, 1);
    model.setItem(0, 0, new QStandardItem(QStringLiteral("Berlin")));
    model.setItem(1, 0, new QStandardItem(QStringLiteral("Bremen")));
    VSortFilterProxyModel proxy;
    proxy.setSourceModel(&model);
    proxy.setSearchString(QStringLiteral("lin"));
    LOG_INFO("%d row(s) match", proxy.rowCount());
    return proxy.rowCount() == 1 && VCore::nullDate().isValid() ? 0 : 1;
}
