#include "TextFaults.h"

#include <QtCore/QDebug>
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

bool meet(const QRectF &one, const QRectF &other)
{
    const QRectF common = one & other;
    return common.width() > Tolerance && common.height() > Tolerance;
}

/// Where the glyphs of an item lie within it.
QRectF inkOf(const QQuickItem &item)
{
    auto font = item.property("font").value<QFont>();
    // The size in use, which text that fits itself into its box has reduced.
    const auto info = item.property("fontInfo").value<QJSValue>();
    font.setPixelSize(std::max(1, info.property(QStringLiteral("pixelSize")).toInt()));
    const QFontMetricsF metrics(font);
    const QString text = item.property("text").toString();
    const qreal free = item.width() - metrics.horizontalAdvance(text);
    const int alignment = item.property("effectiveHorizontalAlignment").toInt();
    const qreal share = (alignment & Qt::AlignRight) != 0     ? 1
                        : (alignment & Qt::AlignHCenter) != 0 ? 0.5
                                                              : 0;
    return metrics.tightBoundingRect(text).translated(free * share, item.baselineOffset());
}

/// Goes through the items in the order in which they are painted.
struct Walk
{
    const QQuickItem &root;
    std::vector<Ink> inks;
    QStringList faults;

    QStringList run()
    {
        visit(root, 1);
        const QRectF whole =
            root.boundingRect().adjusted(-Tolerance, -Tolerance, Tolerance, Tolerance);
        for (auto ink = inks.begin(); ink != inks.end(); ++ink) {
            if (!whole.contains(ink->area))
                report(*ink, QStringLiteral("sticks out of the dashboard"));
            for (auto other = ink + 1; other != inks.end(); ++other) {
                if (meet(ink->area, other->area))
                    report(*ink, QStringLiteral("lies on '%1'").arg(other->text));
            }
        }
        return faults;
    }

    void report(const Ink &ink, const QString &fault)
    {
        QString place;
        QDebug(&place) << ink.area.toAlignedRect();
        faults.append(QStringLiteral("'%1' %2: %3").arg(ink.text, fault, place));
    }

    void visit(const QQuickItem &item, qreal opacity)
    {
        const qreal shown = opacity * item.opacity();
        if (!item.isVisible() || shown <= 0)
            return;
        QList<QQuickItem *> children = item.childItems();
        std::stable_sort(children.begin(), children.end(),
                         [](const QQuickItem *a, const QQuickItem *b) { return a->z() < b->z(); });
        // An item lies over its children of negative z.
        auto child = children.cbegin();
        for (; child != children.cend() && (*child)->z() < 0; ++child)
            visit(**child, shown);
        if (item.inherits("QQuickText"))
            addText(item);
        else if (item.inherits("QQuickRectangle") && shown >= 1)
            cover(item);
        for (; child != children.cend(); ++child)
            visit(**child, shown);
    }

    void addText(const QQuickItem &item)
    {
        const QRectF ink = inkOf(item);
        const int alpha = item.property("color").value<QColor>().alpha();
        if (ink.isEmpty() || alpha == 0 || item.objectName() == QLatin1String("ghost"))
            return;
        inks.push_back({item.property("text").toString(), item.mapRectToItem(&root, ink)});
        if (ink.width() > item.width() + 2 * Tolerance ||
            ink.height() > item.height() + 2 * Tolerance)
            report(inks.back(), QStringLiteral("is larger than its box"));
    }

    void cover(const QQuickItem &item)
    {
        const bool hasGradient = item.property("gradient").value<QJSValue>().isObject();
        if (!hasGradient && item.property("color").value<QColor>().alpha() < 255)
            return;
        const QPointF along =
            item.mapToItem(&root, QPointF(1, 0)) - item.mapToItem(&root, QPointF(0, 0));
        if (along.y() != 0 || std::min(item.width(), item.height()) < 4)
            return; // A needle, a tick or a line.
        // Round corners leave a little uncovered.
        const qreal corner = item.property("radius").toReal() * 0.3;
        const QRectF area = item.mapRectToItem(&root, item.boundingRect())
                                .adjusted(corner, corner, -corner, -corner);
        const auto covered = std::remove_if(
            inks.begin(), inks.end(), [&area](const Ink &ink) { return area.contains(ink.area); });
        inks.erase(covered, inks.end());
        for (const Ink &ink : inks) {
            if (meet(area, ink.area))
                report(ink, QStringLiteral("is cut by what lies over it"));
        }
    }
};

} // namespace

QStringList textFaults(const QQuickItem &root)
{
    return Walk{root, {}, {}}.run();
}
