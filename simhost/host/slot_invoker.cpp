// Calls the plug-in's slots by name with values from a scenario.
#include "slot_invoker.h"

#include "station.h"

#include <QJsonDocument>
#include <QMetaMethod>
#include <QObject>

#include <array>

namespace {

QString shown(const QJsonValue& value)
{
    const QByteArray text = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(text.mid(1, text.size() - 2));
}

// Storage for one converted argument; QGenericArgument points into it.
struct ArgumentValue {
    bool flag = false;
    int whole = 0;
    double number = 0.0;
    QString text;
    HostItem* item = nullptr;
    QList<Item> items;
    std::array<double, 12> joints{};
    const double* jointPointer = nullptr;
    void* data = nullptr;
};

QMetaMethod findSlot(const QMetaObject* meta, const QString& slot, int argumentCount)
{
    for (int i = 0; i < meta->methodCount(); ++i) {
        const QMetaMethod method = meta->method(i);
        if (method.access() == QMetaMethod::Public && method.methodType() != QMetaMethod::Signal
            && QString::fromLatin1(method.name()) == slot && method.parameterCount() == argumentCount)
            return method;
    }
    return QMetaMethod();
}

bool lookUpItem(const QJsonValue& value, const Station& station, HostItem** item, QString* problem)
{
    *item = nullptr;
    if (value.isNull())
        return true;
    *item = station.findAny(value.toString());
    if (!*item)
        *problem = QStringLiteral("unknown item \"%1\"").arg(value.toString());
    return *item != nullptr;
}

// Converts one scenario value to the parameter type; false with a problem when it does not fit.
bool convert(const QByteArray& type, const QJsonValue& value, const Station& station, ArgumentValue* out,
             QString* problem)
{
    if (type == "bool" && value.isBool()) {
        out->flag = value.toBool();
        out->data = &out->flag;
    } else if (type == "int" && value.isDouble() && value.toDouble() == double(value.toInt())) {
        out->whole = value.toInt();
        out->data = &out->whole;
    } else if (type == "double" && value.isDouble()) {
        out->number = value.toDouble();
        out->data = &out->number;
    } else if (type == "QString" && value.isString()) {
        out->text = value.toString();
        out->data = &out->text;
    } else if ((type == "Item" || type == "HostItem*") && (value.isString() || value.isNull())) {
        if (!lookUpItem(value, station, &out->item, problem))
            return false;
        out->data = &out->item;
    } else if ((type == "const double*" || type == "double*") && value.isArray() && !value.toArray().isEmpty()
               && value.toArray().size() <= 12) {
        const QJsonArray array = value.toArray();
        for (int i = 0; i < array.size(); ++i) {
            if (!array[i].isDouble()) {
                *problem = QStringLiteral("joint values must be numbers");
                return false;
            }
            out->joints[size_t(i)] = array[i].toDouble();
        }
        out->jointPointer = out->joints.data();
        out->data = &out->jointPointer;
    } else if (type == "QList<Item>" && value.isArray()) {
        for (const QJsonValue& name : value.toArray()) {
            HostItem* item = nullptr;
            if (!name.isString() || !lookUpItem(name, station, &item, problem))
                return false;
            out->items.append(item);
        }
        out->data = &out->items;
    } else {
        *problem = QStringLiteral("a parameter of type %1 cannot take %2")
                       .arg(QString::fromLatin1(type), shown(value));
        return false;
    }
    return true;
}

}  // namespace

namespace slot_invoker {

bool invoke(QObject* target, const QString& slot, const QJsonArray& args, const Station& station,
            QJsonValue* result, QString* problem)
{
    const QMetaMethod method = findSlot(target->metaObject(), slot, args.size());
    if (!method.isValid() || args.size() > 10) {
        *problem = QStringLiteral("the plug-in has no public slot \"%1\" taking %2 arguments").arg(slot).arg(args.size());
        return false;
    }
    std::array<ArgumentValue, 10> values;
    std::array<QByteArray, 10> typeNames;
    std::array<QGenericArgument, 10> arguments;
    for (int i = 0; i < args.size(); ++i) {
        typeNames[size_t(i)] = method.parameterTypes().at(i);
        QString why;
        if (!convert(typeNames[size_t(i)], args[i], station, &values[size_t(i)], &why)) {
            *problem = QStringLiteral("argument %1 of \"%2\": %3").arg(i + 1).arg(slot, why);
            return false;
        }
        arguments[size_t(i)] = QGenericArgument(typeNames[size_t(i)].constData(), values[size_t(i)].data);
    }

    const QByteArray returnType = method.typeName();
    ArgumentValue returned;
    QGenericReturnArgument returnArgument;
    if (returnType == "bool")
        returnArgument = QGenericReturnArgument(returnType.constData(), &returned.flag);
    else if (returnType == "Item" || returnType == "HostItem*")
        returnArgument = QGenericReturnArgument(returnType.constData(), &returned.item);
    else if (returnType == "QString")
        returnArgument = QGenericReturnArgument(returnType.constData(), &returned.text);
    else if (returnType == "int")
        returnArgument = QGenericReturnArgument(returnType.constData(), &returned.whole);
    else if (returnType == "double")
        returnArgument = QGenericReturnArgument(returnType.constData(), &returned.number);

    const bool called = QMetaObject::invokeMethod(
        target, method.name().constData(), Qt::DirectConnection, returnArgument, arguments[0], arguments[1],
        arguments[2], arguments[3], arguments[4], arguments[5], arguments[6], arguments[7], arguments[8], arguments[9]);
    if (!called) {
        *problem = QStringLiteral("the slot \"%1\" could not be called").arg(slot);
        return false;
    }

    *result = QJsonValue();
    if (returnType == "bool")
        *result = returned.flag;
    else if (returnType == "QString")
        *result = returned.text;
    else if (returnType == "int")
        *result = returned.whole;
    else if (returnType == "double")
        *result = returned.number;
    else if (returnArgument.name() && station.knows(returned.item))
        *result = static_cast<SimItem*>(returned.item)->itemName();
    return true;
}

}  // namespace slot_invoker
