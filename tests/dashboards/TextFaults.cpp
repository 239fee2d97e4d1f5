#include "TextFaults.h"

#include <QtCore/QRectF>
#include <QtGui/QColor>
#include <QtGui/QFontMetricsF>
#include <QtQml/QJSValue>
#include <QtQuick/QQuickItem>

#include <algorithm>
#include <vector>

namespace {

constexpr qreal Tolerance = 0.75; // pixels of the dashboard; antialiasing reaches that far

struct Ink
{
    QString text;
    QRectF area; ///< In the root's coordinates.
};

QFont paintedFont(const QQuickItem &item)
{
    auto font = item.property("font").value<QFont>();
    // The size in use, which text that fits itself into its box has reduced.
    const int size =
        item.property("fontInfo").value<QJSValue>().property(QStringLiteral("pixelSize")).toInt();
    if (size > 0)
        font.setPixelSize(size);
    return font;
}

/// Where the glyphs of an item lie within it.
QRectF inkOf(const QQuickItem &item)
{
    const QFontMetricsF metrics(paintedFont(item));
    const QString text = item.property("text").toString();
    const qreal free = item.width() - metrics.horizontalAdvance(text);
    const int alignment = item.property("effectiveHorizontalAlignment").toInt();
    const qreal left = (alignment & Qt::AlignRight) != 0     ? free
                       : (alignment & Qt::AlignHCenter) != 0 ? free / 2
                                                             : 0;
    return metrics.tightBoundingRect(text).translated(left, item.baselineOffset());
}

/// Goes through the items in the order in which they are painted.
class Walk
{
public:
    explicit Walk(const QQuickItem &root)
        : root(root)
    {
    }

    QStringList run()
    {
        visit(root, 1);
        const QRectF whole = QRectF(0, 0, root.width(), root.height())
                                 .adjusted(-Tolerance, -Tolerance, Tolerance, Tolerance);
        for (std::size_t i = 0; i < inks.size(); ++i) {
            if (!whole.contains(inks[i].area))
                report(QStringLiteral("%1 sticks out of the dashboard"), inks[i]);
            for (std::size_t j = i + 1; j < inks.size(); ++j) {
                if (meet(inks[i].area, inks[j].area))
                    report(
                        QStringLiteral("%1 lies on '%2'").arg(QStringLiteral("%1"), inks[j].text),
                        inks[i]);
            }
        }
        return faults;
    }

private:
    static bool meet(const QRectF &one, const QRectF &other)
    {
        const QRectF common = one & other;
        return common.width() > Tolerance && common.height() > Tolerance;
    }

    void report(const QString &form, const Ink &ink)
    {
        const QRect area = ink.area.toAlignedRect();
        faults.append(form.arg(QStringLiteral("'%1' at %2,%3 %4x%5")
                                   .arg(ink.text)
                                   .arg(area.x())
                                   .arg(area.y())
                                   .arg(area.width())
                                   .arg(area.height())));
    }

    void visit(const QQuickItem &item, qreal opacity)
    {
        const qreal shown = opacity * item.opacity();
        if (!item.isVisible() || shown <= 0)
            return;
        QList<QQuickItem *> children = item.childItems();
        std::stable_sort(children.begin(), children.end(),
                         [](const QQuickItem *a, const QQuickItem *b) { return a->z() < b->z(); });
        const auto above = std::find_if(children.cbegin(), children.cend(),
                                        [](const QQuickItem *child) { return child->z() >= 0; });
        std::for_each(children.cbegin(), above, [&](auto *child) { visit(*child, shown); });
        if (item.inherits("QQuickText"))
            addText(item);
        else if (item.inherits("QQuickRectangle") && shown >= 1)
            cover(item);
        std::for_each(above, children.cend(), [&](auto *child) { visit(*child, shown); });
    }

    void addText(const QQuickItem &item)
    {
        const QRectF ink = inkOf(item);
        const bool isPainted = item.property("color").value<QColor>().alpha() > 0;
        if (ink.isEmpty() || !isPainted || item.objectName() == QLatin1String("ghost"))
            return;
        inks.push_back({item.property("text").toString(), item.mapRectToItem(&root, ink)});
        if (ink.width() > item.width() + 2 * Tolerance ||
            ink.height() > item.height() + 2 * Tolerance)
            report(QStringLiteral("%1 is larger than its box"), inks.back());
    }

    void cover(const QQuickItem &item)
    {
        const bool hasGradient = item.property("gradient").value<QJSValue>().isObject();
        if (!hasGradient && item.property("color").value<QColor>().alpha() < 255)
            return;
        const QPointF along =
            item.mapToItem(&root, QPointF(1, 0)) - item.mapToItem(&root, QPointF(0, 0));
        constexpr qreal NarrowestCover = 4;
        if (along.y() != 0 || item.width() < NarrowestCover || item.height() < NarrowestCover)
            return; // A needle, a tick or a line.
        // Round corners leave a little uncovered.
        const qreal corner = item.property("radius").toReal() * 0.3;
        const QRectF area = item.mapRectToItem(&root, QRectF(0, 0, item.width(), item.height()))
                                .adjusted(corner, corner, -corner, -corner);
        const auto covered = std::remove_if(
            inks.begin(), inks.end(), [&area](const Ink &ink) { return area.contains(ink.area); });
        inks.erase(covered, inks.end());
        for (const Ink &ink : inks) {
            if (meet(area, ink.area))
                report(QStringLiteral("%1 is cut by what lies over it"), ink);
        }
    }

    const QQuickItem &root;
    std::vector<Ink> inks;
    QStringList faults;
};

} // namespace

QStringList textFaults(const QQuickItem &root)
{
    return Walk(root).run();
}
