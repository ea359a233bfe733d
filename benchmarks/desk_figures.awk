# The figures of one desk's reception file, in the order of the table, for ordinary receptions:
# times written hh:mm:ss, whole numbers of reservations.

function seconds(time) {
  return substr(time, 1, 2) * 3600 + substr(time, 4, 2) * 60 + substr(time, 7, 2)
}

function minutes(span) {
  return int(span / 60 + 0.5)
}

BEGIN {
  FS = "\t"
  split("9 11 13 15 17 19 21 24", band_end, " ")
}

{ sub(/\r$/, "") }

NF != 11 { next }
$5 == "" { ++unhandled; next }

{
  ++handled
  called = seconds($3)
  wait = called - seconds($2)
  if (wait < 0) wait += 86400
  wait_sum += wait
  if (wait > longest) longest = wait
  if ($6 != "") ++mail
  if ($8 > 0) ++reserved
  hour = substr($2, 1, 2) + 0
  for (i = 1; i <= 8; ++i) if (hour < band_end[i]) { ++band[i]; break }
  is_call[called] = 1
}

END {
  previous = -1
  for (time = 0; time < 86400; ++time) {
    if (!(time in is_call)) continue
    if (previous >= 0 && time - previous <= 3599) { interval_sum += time - previous; ++intervals }
    previous = time
  }
  printf "%d %d %d %d", handled, unhandled, mail, reserved
  for (i = 1; i <= 8; ++i) printf " %d", band[i]
  printf " %d %d %d\n", handled ? minutes(wait_sum / handled) : 0, minutes(longest), intervals ? minutes(interval_sum / intervals) : 0
}
