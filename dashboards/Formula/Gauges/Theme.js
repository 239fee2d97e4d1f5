.pragma library

// Signal colours on black cells, as on a steering wheel; the shared palette has the same names.

// Text, from values down to what is off or unknown.
var ink = "#ffffff"
var muted = "#9fb0bf"
var faint = "#66747f"
var ghost = "#1d252d"

// Surfaces.
var faceTop = "#10161c"
var faceMiddle = "#0c1116"
var faceBottom = "#080b0f"
var metal = "#2f3b46"
var metalDark = "#12181e"
var night = "#000000"
var bezelBright = "#8d969f"
var bezelDark = "#2b3138"
var bezelEdge = "#040506"

// Meanings.
var accent = "#00e1ff"
var good = "#12d45f"
var caution = "#ffc400"
var danger = "#ff2a3c"
var flash = "#a64dff"
var cold = "#2f7dff"

// Session flags, and text on bright surfaces.
var black = "#000000"
var white = "#ffffff"
var yellow = "#ffe100"
var blue = "#1457f5"
var blueRim = "#8fb2ff"
var inkOnBright = "#05070a"

// Only in this dashboard: the captions' colours group what belongs together.
var timing = "#00e1ff"
var settings = "#ff5fd8"
var forces = "#ffc400"
var bestLap = "#d08cff"

var labelSize = 10
var fontFamily = "Play"
var fontFiles = ["fonts/Play-Regular.ttf", "fonts/Play-Bold.ttf"]
var kerning = false // By a table that not every build of Qt reads.
var segmentFamily = "DSEG7 Classic"
var segmentFile = "fonts/DSEG7Classic-Bold.ttf"
