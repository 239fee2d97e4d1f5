import QtQuick 2.15

// Remembers the course of a value as means over several publications, the latest last.
//   value, known   the value, and whether it is known; unknown values clear the memory
//   publication    changes with every publication, after the value
//   resting        whether publications don't count, as while paused
//   perSample, capacity   publications in a mean, and how many means are kept
//   samples        the means
//   change         mean of the newer half minus mean of the older half; 0 until `settled`
//   settled        whether there are enough samples to tell
QtObject {
    id: trend

    property real value: 0
    property bool known: true
    property int publication: 0
    property bool resting: false
    property int perSample: 250
    property int capacity: 24

    property var samples: []
    readonly property bool settled: samples.length >= 6
    readonly property real change: settled ? meanOf(Math.ceil(samples.length / 2), samples.length)
                                             - meanOf(0, Math.floor(samples.length / 2)) : 0

    property real sum: 0
    property int count: 0

    function meanOf(from, to) {
        let total = 0
        for (let i = from; i < to; ++i)
            total += samples[i]
        return total / (to - from)
    }

    function forget() {
        sum = 0
        count = 0
        if (samples.length > 0)
            samples = []
    }

    function add() {
        sum += value
        if (++count < perSample)
            return
        samples = samples.concat(sum / count).slice(-capacity)
        sum = 0
        count = 0
    }

    onPublicationChanged: {
        if (!known)
            forget()
        else if (!resting)
            add()
    }
}
