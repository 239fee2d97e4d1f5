.pragma library

/// With a real minus; a value that rounds to zero has none.
function fixed(value, decimals) {
    return value.toFixed(decimals).replace(/^-(?=[0.]*$)/, "").replace("-", "−")
}

/// With a sign always.
function signed(value, decimals) {
    const text = fixed(value, decimals)
    return text.startsWith("−") ? text : "+" + text
}
