// SPDX-License-Identifier: MIT
#include "Velmora/Presentation/ViewEngine.h"

#include <QQmlComponent>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSGRendererInterface>

#include "Velmora/Presentation/Theme.h"

// Written by the build: tells the engine of the types of the module.
void qml_register_types_Velmora_Presentation();  // NOLINT(readability-identifier-naming)

// What lies in a static library unreferenced would not be linked, and resources have to be asked
// for outside of any namespace.
static void useModule() {
    Q_INIT_RESOURCE(velmora_symbols);
    Q_INIT_RESOURCE(velmora_program_icon);
#ifdef VELMORA_HAS_ANIMATIONS
    Q_INIT_RESOURCE(velmora_animations);
#endif
    Q_INIT_RESOURCE(qmake_Velmora_Presentation);
    Q_INIT_RESOURCE(velmora_presentation_raw_qml_0);
    Q_INIT_RESOURCE(qmlcache_velmora_presentation);
    qml_register_types_Velmora_Presentation();
}

namespace velmora {

namespace {

QUrl addressOf(const QString& type) {
    return {QStringLiteral("qrc:/Velmora/Presentation/Qml/%1.qml").arg(type)};
}

}  // namespace

void ViewEngine::registerPresentation() {
    useModule();
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
}

ViewEngine::ViewEngine(Theme& theme) : theme_(theme) {
    theme_.attach(engine_);
    engine_.addImportPath(QStringLiteral("qrc:/"));
}

ViewEngine::~ViewEngine() = default;

std::unique_ptr<QQuickItem> ViewEngine::create(const QString& type, const QVariantMap& properties) {
    QQmlComponent& source = component(type);
    if (source.isError()) {
        qWarning("The view %s cannot be made: %s", qUtf8Printable(type),
                 qUtf8Printable(source.errorString()));
        return nullptr;
    }
    std::unique_ptr<QObject> object(source.createWithInitialProperties(properties));
    auto* item = qobject_cast<QQuickItem*>(object.get());
    if (item == nullptr) {
        qWarning("The view %s cannot be made: %s", qUtf8Printable(type),
                 qUtf8Printable(source.errorString()));
        return nullptr;
    }
    QQmlEngine::setObjectOwnership(item, QQmlEngine::CppOwnership);
    layoutSubtree(*item);
    static_cast<void>(object.release());  // The same object.
    return std::unique_ptr<QQuickItem>(item);
}

void ViewEngine::layoutSubtree(QQuickItem& item) {
    const QList<QQuickItem*> children = item.childItems();
    for (QQuickItem* child : children) {
        layoutSubtree(*child);
    }
    item.ensurePolished();
}

void ViewEngine::loadInBackground(const QString& type) {
    std::unique_ptr<QQmlComponent>& slot = components_[type];
    if (!slot) {
        slot =
            std::make_unique<QQmlComponent>(&engine_, addressOf(type), QQmlComponent::Asynchronous);
    }
}

QQmlComponent& ViewEngine::component(const QString& type) {
    std::unique_ptr<QQmlComponent>& slot = components_[type];
    if (!slot || slot->isLoading()) {
        slot = std::make_unique<QQmlComponent>(&engine_, addressOf(type),
                                               QQmlComponent::PreferSynchronous);
    }
    return *slot;
}

}  // namespace velmora
