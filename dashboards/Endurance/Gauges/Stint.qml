import QtQuick 2.15

// Remembers the laps of the stint: their times and the fuel they used.
//   laps, lapsKnown   completed laps; fewer than before means a new session
//   fuel, fuelKnown   percent; a rise means that the tank was filled
//   lastTime          text of the last lap's time, empty when unknown
//   publication       changes with every publication, after the others
//   times             the last laps as { lap, time }, the latest first
//   perLap            percent of fuel, the mean of the whole laps since the tank was filled; 0 is unknown
//   lapsLeft          laps that the fuel lasts; 0 is unknown
//   boxLap            the last lap that the fuel lasts for, as of the line; 0 is unknown
QtObject {
    id: stint

    property int laps: 0
    property bool lapsKnown: false
    property int fuel: 0
    property bool fuelKnown: false
    property string lastTime
    property int publication: 0
    property int capacity: 5

    property var times: []
    property real perLap: 0
    readonly property real lapsLeft: perLap > 0 && fuelKnown ? fuel / perLap : 0
    property int boxLap: 0

    property int seenLaps: -1
    // Lowest since the tank was filled; -1 before any.
    property int leastFuel: -1
    // At the first line after the tank was filled; -1 before that.
    property int firstFuel: -1
    property int firstLaps: 0

    function forgetFuel() {
        firstFuel = -1
        perLap = 0
        boxLap = 0
    }

    function begin() {
        seenLaps = lapsKnown ? laps : -1
        forgetFuel()
        if (times.length > 0)
            times = []
    }

    function watchTank() {
        if (!fuelKnown) {
            forgetFuel()
            leastFuel = -1
        } else if (leastFuel < 0 || fuel > leastFuel + 1) {
            // One percent more is sloshing fuel. A lap takes much the same with a full tank.
            firstFuel = -1
            boxLap = 0
            leastFuel = fuel
        } else {
            leastFuel = Math.min(leastFuel, fuel)
        }
    }

    function crossLine() {
        seenLaps = laps
        times = [{ lap: laps, time: lastTime }].concat(times).slice(0, capacity)
        if (!fuelKnown)
            return
        if (firstFuel < 0) {
            firstFuel = fuel
            firstLaps = laps
        } else {
            perLap = Math.max(0, (firstFuel - fuel) / (laps - firstLaps))
        }
        boxLap = perLap > 0 ? laps + Math.floor(fuel / perLap) : 0
    }

    // Some games send a lap's time only after counting the lap.
    function correctTime() {
        if (times.length > 0 && times[0].time !== lastTime)
            times = [{ lap: times[0].lap, time: lastTime }].concat(times.slice(1))
    }

    onPublicationChanged: {
        watchTank()
        if (!lapsKnown || laps < seenLaps || seenLaps < 0) {
            if (seenLaps >= 0 || lapsKnown)
                begin()
        } else if (laps > seenLaps) {
            crossLine()
        } else {
            correctTime()
        }
    }
}
