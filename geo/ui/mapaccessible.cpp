#include "geo/ui/mapaccessible.h"

#include "geo/ui/mapview.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QHash>
#include <QPointer>

#include <algorithm>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

// One dot, as long as the dots of the map are those that it was made for.
class DotAccessible : public QAccessibleInterface, public QAccessibleActionInterface
{
public:
    DotAccessible(MapView *map, std::size_t dot)
        : m_map(map)
        , m_dot(dot)
        , m_generation(map->generation())
    {
    }

    [[nodiscard]] bool isValid() const override { return m_map && m_map->generation() == m_generation; }
    [[nodiscard]] QObject *object() const override { return nullptr; }
    [[nodiscard]] QWindow *window() const override
    {
        return isValid() ? m_map->window()->windowHandle() : nullptr;
    }
    [[nodiscard]] QAccessibleInterface *parent() const override
    {
        return isValid() ? QAccessible::queryAccessibleInterface(m_map) : nullptr;
    }
    [[nodiscard]] QAccessibleInterface *child(int) const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::Button; }

    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        if (!isValid()) {
            return {};
        }
        const QStringList lines = m_map->scene().linesOf(dot());
        return kind == QAccessible::Name ? lines.join(u", ")
            : kind == QAccessible::Value ? QString::number(dot().count)
                                         : QString();
    }
    void setText(QAccessible::Text, const QString &) override { }

    [[nodiscard]] QRect rect() const override
    {
        if (!isValid()) {
            return {};
        }
        const double radius = dotRadius(dot().count);
        const QPointF centre = m_map->viewport().toPixel(dot().point);
        const QRectF around(centre - QPointF(radius, radius), QSizeF(radius, radius) * 2);
        const QRect inMap = around.toAlignedRect();
        return {m_map->mapToGlobal(inMap.topLeft()), inMap.size()};
    }

    [[nodiscard]] QAccessible::State state() const override
    {
        QAccessible::State state;
        state.invalid = !isValid();
        state.invisible = state.invalid || !m_map->isVisible();
        state.focusable = !state.invalid;
        state.focused = !state.invalid && m_map->hasFocus() && m_map->pointedDot() == m_dot;
        return state;
    }

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface *>(this)
                                                    : nullptr;
    }
    [[nodiscard]] QStringList actionNames() const override { return {pressAction()}; }
    void doAction(const QString &name) override
    {
        if (name == pressAction() && isValid()) {
            m_map->chooseDot(m_dot);
        }
    }
    [[nodiscard]] QStringList keyBindingsForAction(const QString &) const override { return {}; }

private:
    [[nodiscard]] const MapDot &dot() const { return m_map->scene().dots()[m_dot]; }

    QPointer<MapView> m_map;
    std::size_t m_dot;
    int m_generation;
};

class MapAccessible : public QAccessibleWidget
{
public:
    explicit MapAccessible(MapView *map)
        : QAccessibleWidget(map, QAccessible::Canvas)
    {
    }
    MapAccessible(const MapAccessible &) = delete;
    MapAccessible &operator=(const MapAccessible &) = delete;
    ~MapAccessible() override { forget(); }

    [[nodiscard]] int childCount() const override
    {
        return QAccessibleWidget::childCount() + static_cast<int>(map().dotsInView().size());
    }

    [[nodiscard]] QAccessibleInterface *child(int index) const override
    {
        const int widgets = QAccessibleWidget::childCount();
        if (index < widgets) {
            return QAccessibleWidget::child(index);
        }
        const auto number = static_cast<std::size_t>(index - widgets);
        return number < map().dotsInView().size() ? of(map().dotsInView()[number]) : nullptr;
    }

    [[nodiscard]] int indexOfChild(const QAccessibleInterface *child) const override
    {
        if (child && child->object()) {
            return QAccessibleWidget::indexOfChild(child);
        }
        const QAccessible::Id id = QAccessible::uniqueId(const_cast<QAccessibleInterface *>(child));
        const auto &dots = map().dotsInView();
        const auto found = std::ranges::find_if(dots,
            [&](std::size_t dot) { return m_generation == map().generation() && m_ids.value(dot) == id; });
        return found == dots.end() ? -1
                                   : QAccessibleWidget::childCount() + static_cast<int>(found - dots.begin());
    }

    [[nodiscard]] QAccessibleInterface *childAt(int x, int y) const override
    {
        if (QAccessibleInterface *child = QAccessibleWidget::childAt(x, y)) {
            return child;
        }
        const QPointF pixel(map().mapFromGlobal(QPoint(x, y)));
        const auto dot = map().clouds() ? std::nullopt : dotAt(map().scene(), map().viewport(), pixel);
        return dot ? of(*dot) : nullptr;
    }

private:
    [[nodiscard]] MapView &map() const { return *static_cast<MapView *>(widget()); }

    // The interface of a dot, made when it is first asked for.
    [[nodiscard]] QAccessibleInterface *of(std::size_t dot) const
    {
        if (m_generation != map().generation()) {
            forget();
            m_generation = map().generation();
        }
        QAccessible::Id &id = m_ids[dot];
        if (id == 0) {
            id = QAccessible::registerAccessibleInterface(new DotAccessible(&map(), dot));
        }
        return QAccessible::accessibleInterface(id);
    }

    void forget() const
    {
        for (const QAccessible::Id id : std::as_const(m_ids)) {
            QAccessible::deleteAccessibleInterface(id);
        }
        m_ids.clear();
    }

    mutable QHash<std::size_t, QAccessible::Id> m_ids;
    mutable int m_generation = -1;
};

QAccessibleInterface *mapInterface(const QString &, QObject *object)
{
    auto *map = qobject_cast<MapView *>(object);
    return map ? new MapAccessible(map) : nullptr;
}

} // namespace

void makeMapAccessible()
{
    QAccessible::installFactory(mapInterface);
}

} // namespace quillon
