#include "platform/widgets/PropertyBinding.h"

#include "base/Assertion.h"

#include <QMetaMethod>
#include <QMetaProperty>
#include <QVariant>

namespace kelo {
namespace {

QMetaProperty propertyOf(const QObject *object, const char *name)
{
    const int index = object ? object->metaObject()->indexOfProperty(name) : -1;
    return index < 0 ? QMetaProperty() : object->metaObject()->property(index);
}

} // namespace

PropertyBinding::PropertyBinding(QObject *target, const char *targetProperty, QObject *source,
                                 const char *sourceProperty)
    : target_(target),
      targetProperty_(targetProperty),
      source_(source),
      sourceProperty_(sourceProperty)
{
    const QMetaProperty from = propertyOf(source, sourceProperty);
    assertThat(from.isReadable(), "A binding needs a property that can be read");
    assertThat(propertyOf(target, targetProperty).isWritable(),
               "A binding needs a property that can be written");
    if (from.hasNotifySignal())
        connect(source, from.notifySignal(), this,
                metaObject()->method(metaObject()->indexOfSlot("carryOver()")));
    carryOver();
}

void PropertyBinding::carryOver()
{
    if (target_ && source_)
        target_->setProperty(targetProperty_.constData(),
                             source_->property(sourceProperty_.constData()));
}

} // namespace kelo
