#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <optional>
#include <vector>

/// Which agents and properties a plug-in's archived state names, and the same state with other ones.
///
/// Free functions; any thread. States that cannot be read name nothing and stay as they are.
namespace plotix {

/// A property, as archives name it, and what it is called from now on.
struct MovedProperty {
    QString agent, key, name;        ///< the agent's identifier; key and name before
    QString toAgent, toKey, toName;  ///< and afterwards
};

/// Whether two states have the same title and list the same properties, whatever else differs.
bool showTheSame(const QByteArray& one, const QByteArray& other);

QString titleIn(const QByteArray& state);  ///< empty when there is none

/// The same view as one of its own, with another identifier and title. Nothing: the state cannot be read.
std::optional<QByteArray> copyOfView(const QByteArray& state, const QString& identifier, const QString& title);

/// The same view with these dates in its panel, seconds since 1970-01-01 UTC. Nothing: the state cannot be read.
std::optional<QByteArray> withDates(const QByteArray& state, double from, double to);

bool namesAgent(const QByteArray& state, const QString& agentIdentifier);

/// Of two properties that become one, one stays in each list. Where `fromAgent` is not empty, it is replaced by
/// `toAgent` everywhere. Nothing: the state names none of them.
std::optional<QByteArray> withMoved(const QByteArray& state, const std::vector<MovedProperty>& properties,
                                    const QString& fromAgent = {}, const QString& toAgent = {});

}  // namespace plotix
