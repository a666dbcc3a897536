#!/usr/bin/env python3
"""Writes the exports in this folder as programs and people write them, and what is in them (manifest.json).

What is expected is computed here from the numbers that were put in, never by reading the files. Local times are those
of Europe/Berlin unless a case says otherwise. Run it in this folder after a change; the files are kept, so that tests
need no Python.
"""
import datetime as dt
import gzip
import io
import json
import math
import pathlib
import zipfile
from zoneinfo import ZoneInfo

HERE = pathlib.Path(__file__).parent
BERLIN = ZoneInfo("Europe/Berlin")
PARIS = ZoneInfo("Europe/Paris")
NEW_YORK = ZoneInfo("America/New_York")
UTC = dt.timezone.utc
ENTRIES = []


def moments(begin, count, minutes=15, zone=BERLIN):
    """Moments a fixed time apart, in the zone's clock."""
    first = dt.datetime(*begin, tzinfo=zone).astimezone(UTC)
    return [(first + dt.timedelta(minutes=minutes * i)).astimezone(zone) for i in range(count)]


def wave(count, base, height, decimals, phase=0.0):
    return [round(base + height * math.sin(0.37 * i + phase), decimals) for i in range(count)]


def seconds(moment):
    return moment.timestamp()


def german(value, decimals=1, grouped=False):
    text = f"{value:,.{decimals}f}" if grouped else f"{value:.{decimals}f}"
    return text.replace(",", "_").replace(".", ",").replace("_", ".")


def french(value, decimals=1, blank=" "):
    return f"{value:,.{decimals}f}".replace(",", "_").replace(".", ",").replace("_", blank)


def prop(name, unit, times, values, marked=()):
    """`marked`: pairs of a time and a value that the file marks as bad; those values are None."""
    pairs = [(seconds(t) if isinstance(t, dt.datetime) else t, v) for t, v in zip(times, values) if v is not None]
    picks = [pairs[0], pairs[len(pairs) // 2], pairs[-1]]
    entry = {"name": name, "unit": unit, "valid": len(pairs), "values": picks}
    if marked:
        entry["marked"] = [(seconds(t), v) for t, v in marked]
    return entry


def write(name, content, encoding="utf-8"):
    data = content if isinstance(content, bytes) else content.encode(encoding)
    (HERE / name).write_bytes(data)


def case(name, content, properties, records, encoding="utf-8", options=None, bad_cells=0, bad_rows=0):
    write(name, content, encoding)
    entry = {"file": name, "records": records, "properties": properties}
    if options:
        entry["options"] = options
    if bad_cells:
        entry["badCells"] = bad_cells
    if bad_rows:
        entry["badRows"] = bad_rows
    ENTRIES.append(entry)


def refused(name, content, finding, options=None, encoding="utf-8"):
    write(name, content, encoding)
    entry = {"file": name, "refused": finding}
    if options:
        entry["options"] = options
    ENTRIES.append(entry)


def lines(rows, delimiter=";", end="\r\n"):
    return end.join(delimiter.join(row) if not isinstance(row, str) else row for row in rows) + end


def quoted(text):
    return '"' + text + '"'


def german_files():
    t = moments((2024, 1, 14, 22), 60)
    a, b = wave(60, 3, 8, 1), wave(60, 1234567, 900, 1)
    case("de_datum_uhrzeit.csv",
         lines([["Datum", "Uhrzeit", "Außentemperatur [°C]", "Zählerstand [kWh]"]] +
               [[f"{x:%d.%m.%Y}", f"{x:%H:%M:%S}", german(v), german(w, 1, True)] for x, v, w in zip(t, a, b)]),
         [prop("Außentemperatur", "°C", t, a), prop("Zählerstand", "kWh", t, b)], 60, "cp1252")
    case("de_preamble.csv",
         lines(["Gebäude: Rathaus Nord;;", "Auswertung vom 16.01.2024 08:00;;", "Zeitraum: 14.01.2024 - 15.01.2024;;", "",
                ["Zeitpunkt", "Vorlauf, °C", "Rücklauf, °C"]] +
               [[f"{x:%d.%m.%Y %H:%M}", german(v), german(v - 5)] for x, v in zip(t, a)] +
               ["Mittelwert;4,1;-0,9", "Maximum;11,0;6,0"]),
         [prop("Vorlauf", "°C", t, a), prop("Rücklauf", "°C", t, [round(v - 5, 1) for v in a])], 60)
    case("de_sep_line.csv",
         lines(["sep=;", ["Zeit", "Leistung kW", "Status"]] +
               [[f"{x:%d.%m.%Y %H:%M}", german(v, 2), "ein" if i % 3 else "aus"] for i, (x, v) in enumerate(zip(t, a))]),
         [prop("Leistung", "kW", t, a), prop("Status", "", t, [1 if i % 3 else 0 for i in range(60)])], 60)
    case("de_einheitenzeile.csv",
         lines([["Datum/Zeit", "Druck", "Feuchte"], ["", "hPa", "%"]] +
               [[f"{x:%d.%m.%y %H:%M}", german(1000 + v), german(50 + v, 0)] for x, v in zip(t, a)]),
         [prop("Druck", "hPa", t, [round(1000 + v, 1) for v in a]),
          prop("Feuchte", "%", t, [float(f"{50 + v:.0f}") for v in a])], 60)
    case("de_luecken.csv",
         lines([["Zeit", "T1 [°C]", "T2 [°C]"]] +
               [[f"{x:%d.%m.%Y %H:%M}", "---" if i % 7 == 0 else german(v), "#NV" if i % 5 == 0 else german(v + 1)]
                for i, (x, v) in enumerate(zip(t, a))]),
         [prop("T1", "°C", t, [None if i % 7 == 0 else v for i, v in enumerate(a)]),
          prop("T2", "°C", t, [None if i % 5 == 0 else round(v + 1, 1) for i, v in enumerate(a)])], 60)
    m = ["Jan", "Feb", "Mrz", "Apr", "Mai", "Jun", "Jul", "Aug", "Sep", "Okt", "Nov", "Dez"]
    t2 = moments((2024, 2, 28, 12), 80, 60)
    c = wave(80, 20, 5, 2)
    case("de_monatsnamen.csv",
         lines([["Zeit", "Wert (m³/h)"]] + [[f"{x.day:02}. {m[x.month - 1]} {x.year} {x:%H:%M}", german(v, 2)]
                                         for x, v in zip(t2, c)]),
         [prop("Wert", "m³/h", t2, c)], 80)
    case("de_maerz_latin1.csv",
         lines([["Zeit", "Wert"]] + [[f"{x.day}. {'Februar' if x.month == 2 else 'März'} {x.year} {x:%H:%M}", german(v, 2)]
                                    for x, v in zip(t2, c)]),
         [prop("Wert", "", t2, c)], 80, "latin-1")
    t3 = moments((2024, 10, 27, 0), 24, 15)
    case("de_zeitumstellung.csv",
         lines([["Zeit", "kW"]] + [[f"{x:%d.%m.%Y %H:%M}", german(v)] for x, v in zip(t3, a)]),
         [prop("kW", "", t3, a[:24])], 24)
    t4 = moments((2024, 10, 27, 0), 24, 15)
    case("de_mesz.csv",
         lines([["Zeit", "Wirkleistung in kW"]] +
               [[f"{x:%d.%m.%Y %H:%M} {'MESZ' if x.utcoffset().seconds == 7200 else 'MEZ'}", german(v)]
                for x, v in zip(t4, a)]),
         [prop("Wirkleistung", "kW", t4, a[:24])], 24)
    case("de_von_bis.csv",
         lines([["Datum", "von", "bis", "Lastgang [kW]"]] +
               [[f"{x:%d.%m.%Y}", f"{x:%H:%M}", f"{x + dt.timedelta(minutes=15):%H:%M}", german(v)]
                for x, v in zip(t, a)]),
         [prop("Lastgang", "kW", t, a)], 60)
    case("de_intervall.csv",
         lines([["Zeitraum", "Preis"]] +
               [[f"{x:%d.%m.%Y %H:%M} - {x + dt.timedelta(minutes=15):%d.%m.%Y %H:%M}", german(v, 2)]
                for x, v in zip(t, a)]),
         [prop("Preis", "", t, a)], 60)
    big = [12345 + 7 * i for i in range(40)]
    group = lambda v: f"{v:,}".replace(",", ".")
    text = lines([["Zeit", "Zähler [m³]"]] + [[f"{x:%d.%m.%Y %H:%M}", group(v)] for x, v in zip(t, big)])
    refused("de_tausend_unklar.csv", text, "DecimalMarkUnknown")
    case("de_tausend_gesagt.csv", text, [prop("Zähler", "m³", t, big)], 40, options={"decimal": "comma"})
    small = [980 + 7 * i for i in range(40)]
    case("de_tausend_klar.csv",
         lines([["Zeit", "Zähler [m³]", "T [°C]"]] +
               [[f"{x:%d.%m.%Y %H:%M}", group(v), german(w)] for x, v, w in zip(t, small, a)]),
         [prop("Zähler", "m³", t, small), prop("T", "°C", t, a[:40])], 40)
    case("de_einheit_in_zelle.csv",
         lines([["Zeit", "Temperatur", "Feuchte"]] +
               [[f"{x:%d.%m.%Y %H:%M}", german(v) + " °C", german(50 + v) + " %"] for x, v in zip(t, a)]),
         [prop("Temperatur", "°C", t, a), prop("Feuchte", "%", t, [round(50 + v, 1) for v in a])], 60)


def us_files():
    t = moments((2024, 1, 14, 22), 60)
    a = wave(60, 70, 9, 1)
    case("us_date_time_ampm.csv",
         lines([["Date", "Time", "Outdoor Temp (°F)"]] +
               [[f"{x.month}/{x.day}/{x.year}", f"{x:%I:%M %p}".lstrip("0"), str(v)] for x, v in zip(t, a)], ","),
         [prop("Outdoor Temp", "°F", t, a)], 60)
    b = wave(60, 1234567, 4000, 2)
    case("us_thousands.csv",
         lines([["Timestamp", "Energy, kWh".join(['"', '"']), "Note"]] +
               [[f"{x:%m/%d/%Y %H:%M}", quoted(f"{v:,.2f}"), quoted("line one\nline two") if i == 3 else ""]
                for i, (x, v) in enumerate(zip(t, b))], ","),
         [prop("Energy", "kWh", t, b)], 60)
    case("us_month_names.csv",
         lines([["When", "Flow [l/min]"]] + [[quoted(f"{x:%b %d, %Y %I:%M:%S %p}"), str(v)] for x, v in zip(t, a)], ","),
         [prop("Flow", "L/min", t, a)], 60)
    case("us_two_digit_logger.csv",
         '"Plot Title: Attic"\r\n' +
         lines([['"#"', '"Date Time, GMT+01:00"', '"Temp, °F (LGR S/N: 1234567, SEN S/N: 1234567)"',
                 '"RH, % (LGR S/N: 1234567, SEN S/N: 1234567)"', '"Host Connected"', '"End Of File"']] +
               [[str(i + 1), f"{x:%m/%d/%y %I:%M:%S %p}", str(v), str(round(v / 2, 3)),
                 "Logged" if i == 59 else "", "Logged" if i == 59 else ""] for i, (x, v) in enumerate(zip(t, a))], ","),
         [prop("Temp", "°F", t, a), prop("RH", "%", t, [round(v / 2, 3) for v in a])], 60)
    ny = moments((2024, 7, 14, 22), 48, 30, NEW_YORK)
    case("us_edt.csv",
         lines([["time", "load_mw"]] + [[f"{x:%Y-%m-%d %H:%M:%S} EDT", str(v)] for x, v in zip(ny, a)], ","),
         [prop("load_mw", "", ny, a[:48])], 48)
    hours = moments((2024, 3, 1, 0), 72, 60)
    case("us_date_hour.csv",
         lines([["Date", "Hour", "Load (MW)"]] +
               [[f"{x:%m/%d/%Y}" if False else f"{x:%Y-%m-%d}", str(x.hour), str(v)]
                for x, v in zip(hours, wave(72, 500, 80, 1))], ","),
         [prop("Load", "MW", hours, wave(72, 500, 80, 1))], 72)
    case("us_states.csv",
         lines([["Time", "Valve", "Pump", "Alarm"]] +
               [[f"{x:%Y-%m-%d %H:%M}", "Open" if i % 4 else "Closed", "ON" if i % 2 else "OFF",
                 "TRUE" if i % 5 == 0 else "FALSE"] for i, x in enumerate(t)], ","),
         [prop("Valve", "", t, [1 if i % 4 else 0 for i in range(60)]),
          prop("Pump", "", t, [i % 2 for i in range(60)]),
          prop("Alarm", "", t, [1 if i % 5 == 0 else 0 for i in range(60)])], 60)
    refused("us_or_uk.csv",
            lines([["Date", "kWh"]] + [[f"{d:02}/03/2024", str(10 + d)] for d in range(1, 11)], ","), "DateOrderUnknown")
    same = lines([["Time", "V"]] + [["2024-01-15 12:00", str(v)] for v in range(500)], ",")
    refused("us_one_time.csv", same, "ManyRowsAtOneTime")


def french_files():
    t = moments((2024, 2, 14, 22), 60, 10, PARIS)
    a, b = wave(60, 4, 8, 1), wave(60, 12345, 900, 2)
    case("fr_date_heure.csv",
         lines([["Date", "Heure", "Température (°C)", "Index (kWh)"]] +
               [[f"{x:%d/%m/%Y}", f"{x:%H:%M}", french(v), french(w, 2, " ")] for x, v, w in zip(t, a, b)]),
         [prop("Température", "°C", t, a), prop("Index", "kWh", t, b)], 60)
    case("fr_insecable.csv",
         lines([["Horodatage", "Puissance (W)"]] +
               [[f"{x:%d/%m/%Y %H:%M}", french(w, 2, "\u202f")] for x, w in zip(t, b)], "\t"),
         [prop("Puissance", "W", t, b)], 60)
    m = ["janv.", "févr.", "mars"]
    case("fr_mois.csv",
         lines([["Date", "Débit (m³/h)"]] + [[f"{x.day} {m[x.month - 1]} {x.year} {x:%H:%M:%S}", french(v)]
                                            for x, v in zip(t, a)]),
         [prop("Débit", "m³/h", t, a)], 60)
    case("fr_ouvert.csv",
         lines([["Date", "Vanne"]] + [[f"{x:%d/%m/%Y %H:%M}", "ouvert" if i % 3 else "fermé"] for i, x in enumerate(t)]),
         [prop("Vanne", "", t, [1 if i % 3 else 0 for i in range(60)])], 60, "cp1252")
    case("ch_apostroph.csv",
         lines([["Zeit", "Ertrag [Wh]"]] +
               [[f"{x:%d.%m.%Y %H:%M}", f"{v:,.1f}".replace(",", "'")] for x, v in zip(t, wave(60, 54321, 999, 1))]),
         [prop("Ertrag", "Wh", t, wave(60, 54321, 999, 1))], 60)


def number_times():
    t = moments((2024, 1, 14, 22), 60)
    a = wave(60, 21, 2, 2)
    for unit, factor in (("s", 1), ("ms", 10**3), ("us", 10**6), ("ns", 10**9)):
        case(f"epoch_{unit}.csv",
             lines([["timestamp", "value"]] + [[str(int(seconds(x)) * factor), str(v)] for x, v in zip(t, a)], ",", "\n"),
             [prop("value", "", t, a)], 60)
    micro = [int(seconds(t[0])) * 10**6 + 250000 * i for i in range(40)]
    case("epoch_us_quarter_seconds.csv", lines([["ts", "v"]] + [[str(x), str(v)] for x, v in zip(micro, a)], ",", "\n"),
         [prop("v", "", [x / 1e6 for x in micro], a[:40])], 40)
    case("epoch_float.csv", lines([["time", "v"]] + [[f"{seconds(x) + 0.5:.3f}", str(v)] for x, v in zip(t, a)], ",", "\n"),
         [prop("v", "", [seconds(x) + 0.5 for x in t], a)], 60)
    serial = lambda x: (x.replace(tzinfo=None) - dt.datetime(1899, 12, 30)).total_seconds() / 86400
    case("serial_date.csv", lines([["Date", "Temp (°C)"]] + [[f"{serial(x):.10f}", str(v)] for x, v in zip(t, a)], ","),
         [prop("Temp", "°C", t, a)], 60)
    case("serial_date_komma.csv",
         lines([["Zeit", "Temp (°C)"]] + [[f"{serial(x):.10f}".replace(".", ","), german(v, 2)] for x, v in zip(t, a)]),
         [prop("Temp", "°C", t, a)], 60)
    case("compact_minutes.csv", lines([["datetime", "rain [mm]"]] + [[f"{x:%Y%m%d%H%M}", str(v)] for x, v in zip(t, a)], ","),
         [prop("rain", "mm", t, a)], 60)
    h = moments((2024, 1, 2, 3), 60, 60, UTC)
    case("compact_hours.txt",
         lines([["STATIONS_ID", "MESS_DATUM", "QN_9", "TT_TU", "RF_TU", "eor"]] +
               [["        44", f"{x:%Y%m%d%H}", "    3", f"{v:6.1f}", f"{80 + i % 7:6.1f}", "eor"]
                for i, (x, v) in enumerate(zip(h, wave(60, 2, 4, 1)))]),
         [prop("TT_TU", "", h, wave(60, 2, 4, 1)), prop("RF_TU", "", h, [80.0 + i % 7 for i in range(60)])], 60,
         options={"zone": "UTC"})
    d = [dt.datetime(2024, 1, 1, tzinfo=BERLIN) + dt.timedelta(days=i) for i in range(40)]
    case("compact_days.csv", lines([["date", "hdd"]] + [[f"{x:%Y%m%d}", str(v)] for x, v in zip(d, a)], ","),
         [prop("hdd", "", d, a[:40])], 40)
    case("compact_date_and_time.csv",
         lines([["DATE", "TIME", "P"]] + [[f"{x:%Y%m%d}", f"{x:%H%M}", str(v)] for x, v in zip(t, a)], ","),
         [prop("P", "", t, a)], 60)
    case("iso_offsets.csv", lines([["time", "a"]] + [[x.isoformat(), str(v)] for x, v in zip(t, a)], ","),
         [prop("a", "", t, a)], 60)
    case("header_says_utc.csv",
         lines([["Time (UTC)", "a"]] + [[f"{x.astimezone(UTC):%Y-%m-%d %H:%M:%S}", str(v)] for x, v in zip(t, a)], ","),
         [prop("a", "", t, a)], 60)
    case("rfc_dates.log",
         lines([["date", "a"]] + [[f"{x:%a, %d %b %Y %H:%M:%S %z}", str(v)] for x, v in zip(t, a)], "\t", "\n"),
         [prop("a", "", t, a)], 60)
    case("database_dates.csv",
         lines([["STAMP", "A"]] + [[f"{x:%d-%b-%y %I.%M.%S.%f %p}".upper(), str(v)] for x, v in zip(t, a)], ","),
         [prop("A", "", t, a)], 60)
    case("slash_by_order.csv",  # no day above 12: only the hours tell that the day comes first
         lines([["date", "a"]] + [[f"{x:%d/%m/%Y %H:%M}", str(v)]
                                  for x, v in zip(moments((2024, 3, 1), 120, 60), wave(120, 5, 1, 2))], ","),
         [prop("a", "", moments((2024, 3, 1), 120, 60), wave(120, 5, 1, 2))], 120)


def logger_files():
    t = moments((2024, 1, 14, 22), 60)
    a = wave(60, 12.5, 1, 3)
    case("logger_four_headers.dat",
         lines(['"TOB1","station","model","1234","os","prog","5678","table"',
                '"TIMESTAMP","RECORD","batt_volt","AirTC_Avg"', '"TS","RN","Volts","Deg C"', '"","","Min","Avg"'] +
               [[quoted(f"{x:%Y-%m-%d %H:%M:%S}"), str(1000 + i), str(v), '"NAN"' if i == 5 else str(v + 5)]
                for i, (x, v) in enumerate(zip(t, a))], ","),
         [prop("batt_volt", "V", t, a), prop("AirTC_Avg", "°C", t, [None if i == 5 else v + 5 for i, v in enumerate(a)])],
         60)
    case("logger_comments.csv",
         lines(["# device 4711", "# firmware 1.2", "# time, temp [C], hum [%]"] +
               [f"{x:%Y-%m-%d %H:%M:%S}, {v}, {40 + i % 9}" + ("\r\n# restarted" if i == 20 else "")
                for i, (x, v) in enumerate(zip(t, a))], ","),
         [prop("temp", "°C", t, a), prop("hum", "%", t, [40 + i % 9 for i in range(60)])], 60)
    case("logger_blanks.txt",
         "Date        Time      T_in    T_out\n" +
         "".join(f"{x:%Y-%m-%d}  {x:%H:%M:%S}  {v:7.3f} {v - 3:7.3f}\n" for x, v in zip(t, a)),
         [prop("T_in", "", t, a), prop("T_out", "", t, [round(v - 3, 3) for v in a])], 60)
    u = moments((2024, 1, 14, 22), 50, 10, UTC)
    case("buoy.txt",
         "#YY  MM DD hh mm WDIR WSPD  ATMP\n#yr  mo dy hr mn degT m/s  degC\n" +
         "".join(f"{x:%Y %m %d %H %M} {200 + i:4} {v:4.1f}  {'MM' if i == 7 else format(v - 9, '.1f'):>5}\n"
                 for i, (x, v) in enumerate(zip(u, wave(50, 6, 2, 1)))),
         [prop("WSPD", "m/s", u, wave(50, 6, 2, 1)),
          prop("ATMP", "°C", u, [None if i == 7 else round(v - 9, 1) for i, v in enumerate(wave(50, 6, 2, 1))])], 50,
         options={"zone": "UTC"})
    header = ["Time", "Ch1 (V)", "Ch2 (V)"]
    rows = [header]
    for i, (x, v) in enumerate(zip(t, a)):
        if i in (20, 40):
            rows += ["", header]
        rows.append([f"{x:%Y-%m-%d %H:%M:%S}", str(v), str(v + 1)])
    case("logger_header_again.csv", lines(rows, ","),
         [prop("Ch1", "V", t, a), prop("Ch2", "V", t, [v + 1 for v in a])], 60)
    case("logger_short_rows.csv",
         lines([["time", "a", "b", "c"]] +
               [[f"{x:%Y-%m-%d %H:%M:%S}", str(v)] + ([str(v + 1), str(v + 2)] if i % 6 else []) for i, (x, v) in
                enumerate(zip(t, a))], ","),
         [prop("a", "", t, a), prop("b", "", t, [v + 1 if i % 6 else None for i, v in enumerate(a)]),
          prop("c", "", t, [v + 2 if i % 6 else None for i, v in enumerate(a)])], 60)
    case("logger_bad_cells.csv",
         lines([["time", "a", "b"]] +
               [[f"{x:%Y-%m-%d %H:%M:%S}", "12..5" if i == 9 else str(v), str(v + 1)] for i, (x, v) in
                enumerate(zip(t, a))], ","),
         [prop("a", "", t, [None if i == 9 else v for i, v in enumerate(a)]), prop("b", "", t, [v + 1 for v in a])], 60,
         bad_cells=1)
    case("logger_utf16.txt",
         lines([["Time", "Temp (°C)"]] + [[f"{x:%Y-%m-%d %H:%M:%S}", str(v)] for x, v in zip(t, a)], "\t"),
         [prop("Temp", "°C", t, a)], 60, "utf-16")
    case("logger_utf16be.csv",
         lines([["Zeit", "Temp [°C]"]] + [[f"{x:%d.%m.%Y %H:%M}", german(v, 3)] for x, v in zip(t, a)]).encode("utf-16-be"),
         [prop("Temp", "°C", t, a)], 60)
    case("logger_bom.csv", lines([["Zeit", "a"]] + [[f"{x:%d.%m.%Y %H:%M}", german(v, 3)] for x, v in zip(t, a)]),
         [prop("a", "", t, a)], 60, "utf-8-sig")
    case("logger_bar.txt", lines([["time", "a"]] + [[f"{x:%Y-%m-%d %H:%M}", str(v)] for x, v in zip(t, a)], "|"),
         [prop("a", "", t, a)], 60)
    case("logger_no_header.csv", lines([[f"{x:%Y-%m-%d %H:%M}", str(v), str(v + 1)] for x, v in zip(t, a)], ","),
         [prop("Column 2", "", t, a), prop("Column 3", "", t, [v + 1 for v in a])], 60)
    case("logger_equal_names.csv",
         lines([["time", "Temp", "Temp", "Temp"]] + [[f"{x:%Y-%m-%d %H:%M}", str(v), str(v + 1), str(v + 2)]
                                                    for x, v in zip(t, a)], ","),
         [prop("Temp", "", t, a), prop("Temp 2", "", t, [v + 1 for v in a]), prop("Temp 3", "", t, [v + 2 for v in a])], 60)
    case("logger.csv.gz",
         gzip.compress(lines([["time", "a"]] + [[f"{x:%Y-%m-%d %H:%M}", str(v)] for x, v in zip(t, a)], ",").encode(),
                       mtime=0),
         [prop("a", "", t, a)], 60)
    case("logger_decimals_named.csv",
         lines([["Time", "Flow temperature, °C", "Wind m/s", "Current, A"]] +
               [[f"{x:%Y-%m-%d %H:%M}", str(v), str(v / 2), str(v + 2)] for x, v in zip(t, a)], ";"),
         [prop("Flow temperature", "°C", t, a), prop("Wind", "m/s", t, [v / 2 for v in a]),
          prop("Current", "A", t, [v + 2 for v in a])], 60)
    case("logger_unordered_units.csv",
         lines([["time", "p"], ["yyyy-mm-dd hh:mm", "mbar"]] + [[f"{x:%Y-%m-%d %H:%M}", str(v)] for x, v in zip(t, a)], ","),
         [prop("p", "mbar", t, a)], 60)
    case("logger_date_once.csv",
         lines([["Date", "Time", "a"]] +
               [[f"{x:%Y-%m-%d}" if i == 0 or x.date() != t[i - 1].date() else "", f"{x:%H:%M}", str(v)]
                for i, (x, v) in enumerate(zip(t, a))], ","),
         [prop("a", "", t, a)], 60)


def long_files():
    t = moments((2024, 1, 14, 22), 30)
    a, b = wave(30, 21, 2, 2), wave(30, 45, 5, 1)
    rows = []
    for x, v, w in zip(t, a, b):
        rows += [[f"{x:%d.%m.%Y %H:%M}", "Raum 1 Temperatur", german(v, 2), "°C"],
                 [f"{x:%d.%m.%Y %H:%M}", "Raum 1 Feuchte", german(w), "%"]]
    case("long_de.csv", lines([["Zeit", "Name", "Wert", "Einheit"]] + rows),
         [prop("Raum 1 Temperatur", "°C", t, a), prop("Raum 1 Feuchte", "%", t, b)], 30)
    rows = [[x.astimezone(UTC).isoformat().replace("+00:00", "Z"), "AHU1.SAT", str(v), "Good"] for x, v in zip(t, a)]
    rows += [[x.astimezone(UTC).isoformat().replace("+00:00", "Z"), "AHU1.RH", str(v) if i != 4 else "Bad",
              "Good" if i != 4 else "Bad"] for i, (x, v) in enumerate(zip(t, b))]
    case("long_tags.csv", lines([["Timestamp", "TagName", "Value", "Quality"]] + rows, ","),
         [prop("AHU1.SAT", "", t, a), prop("AHU1.RH", "", t, [None if i == 4 else v for i, v in enumerate(b)])], 30)
    events, x0 = [], seconds(t[0])
    for i in range(40):
        events.append((x0 + 61 * i, "sensor.kitchen", str(round(20 + i / 10, 1)) if i != 6 else "unavailable"))
        if i % 4 == 0:
            events.append((x0 + 61 * i + 7, "switch.pump", "on" if i % 8 else "off"))
    iso = lambda s: dt.datetime.fromtimestamp(s, UTC).strftime("%Y-%m-%dT%H:%M:%S.000Z")
    case("long_home.csv", lines([["entity_id", "state", "last_changed"]] + [[n, v, iso(s)] for s, n, v in events], ",", "\n"),
         [prop("sensor.kitchen", "", [x0 + 61 * i for i in range(40)],
               [None if i == 6 else round(20 + i / 10, 1) for i in range(40)]),
          prop("switch.pump", "", [x0 + 61 * i + 7 for i in range(0, 40, 4)], [1 if i % 8 else 0 for i in range(0, 40, 4)])],
         50)
    case("long_annotated.csv",
         "#group,false,false,true,true,false,false,true,true\n"
         "#datatype,string,long,dateTime:RFC3339,dateTime:RFC3339,dateTime:RFC3339,double,string,string\n"
         "#default,_result,,,,,,,\n" +
         lines([["", "result", "table", "_start", "_stop", "_time", "_value", "_field", "_measurement"]] +
               [["", "", str(k), iso(x0), iso(x0 + 99999), iso(seconds(x)), str(v), f, "room"]
                for k, (f, values) in enumerate((("temperature", a), ("humidity", b))) for x, v in zip(t, values)],
               ",", "\r\n"),
         [prop("temperature", "", t, a), prop("humidity", "", t, b)], 30)
    rows = []
    for x, v, w in zip(t, a, b):
        rows += [[f"{x:%Y-%m-%d %H:%M}", "North", str(v), str(w)], [f"{x:%Y-%m-%d %H:%M}", "South", str(v + 1), str(w)]]
    text = lines([["time", "station", "temp", "hum"]] + rows, ",")
    refused("stations.csv", text, "ManyRowsAtOneTime")
    case("stations_one.csv", text, [prop("temp", "", t, a), prop("hum", "", t, b)], 30,
         options={"where": "station=North"})


def management_files():
    t = moments((2024, 1, 14, 22), 40)
    a = wave(40, 18, 3, 2)
    case("bms_trend_report.csv",
         lines(['"Trend Report","Site: Main Street","",""', '"From:","1/14/2024 10:00 PM","",""',
                '"To:","1/15/2024 8:00 AM","",""', "", '"Timestamp","AHU-1 Supply Temp (°C)","AHU-1 Fan","Zone CO2 [ppm]"'] +
               [[quoted(f"{x.month}/{x.day}/{x.year} {x:%I:%M:%S %p}"), quoted(str(v)), quoted("Running" if i % 5 else "Stopped"),
                 quoted("n/a" if i == 3 else str(400 + i))] for i, (x, v) in enumerate(zip(t, a))] +
               ["", '"End of Report"'], ","),
         [prop("AHU-1 Supply Temp", "°C", t, a), prop("AHU-1 Fan", "", t, [1 if i % 5 else 0 for i in range(40)]),
          prop("Zone CO2", "ppm", t, [None if i == 3 else 400 + i for i in range(40)])], 40)
    case("bms_qualities.csv",
         lines([["Date", "TI-101", "TI-101 Status", "TI-102", "TI-102 Status"]] +
               [[f"{x:%d-%b-%Y %H:%M:%S}", str(v), "Good", "Bad" if i == 2 else str(v + 1), "Good"] for i, (x, v) in
                enumerate(zip(t, a))], ","),
         [prop("TI-101", "", t, a), prop("TI-102", "", t, [None if i == 2 else v + 1 for i, v in enumerate(a)])], 40)
    case("bms_zone_named.csv",
         lines(["Time zone;UTC", ["Zeitstempel", "Wert [kW]"]] +
               [[f"{x.astimezone(UTC):%d.%m.%Y %H:%M:%S}", german(v, 2)] for x, v in zip(t, a)]),
         [prop("Wert", "kW", t, a)], 40)
    days = [dt.date(2024, 1, 1) + dt.timedelta(days=i) for i in range(20)]
    noon = [dt.datetime(d.year, d.month, d.day, tzinfo=BERLIN) for d in days]
    case("bms_daily.csv",
         lines([["Tag", "Verbrauch (m³)"]] + [[f"{d:%d.%m.%Y}", german(v)] for d, v in zip(days, a)] +
               [["Summe", german(sum(a[:20]))]]),
         [prop("Verbrauch", "m³", noon, [round(v, 1) if False else float(f"{v:.1f}") for v in a[:20]])], 20)


COLUMNS = "ABCDEFGHIJ"


def xlsx(sheets, dates1904=False, shared=True):
    """A spreadsheet's file; a cell is None, a number, a text, a bool, ('date', serial), ('time', fraction) or ('error', text)."""
    texts, parts = [], {}

    def cell(reference, value):
        if isinstance(value, bool):
            return f'<c r="{reference}" t="b"><v>{int(value)}</v></c>'
        if isinstance(value, tuple):
            kind, content = value
            if kind == "error":
                return f'<c r="{reference}" t="e"><v>{content}</v></c>'
            if kind == "formula":
                return f'<c r="{reference}"><f>A1*2</f><v>{content!r}</v></c>'
            return f'<c r="{reference}" s="{ {"date": 1, "time": 2, "day": 3}[kind]}"><v>{content!r}</v></c>'
        if isinstance(value, str):
            escaped = value.replace("&", "&amp;").replace("<", "&lt;")
            if not shared:
                return f'<c r="{reference}" t="inlineStr"><is><t>{escaped}</t></is></c>'
            if escaped not in texts:
                texts.append(escaped)
            return f'<c r="{reference}" t="s"><v>{texts.index(escaped)}</v></c>'
        return f'<c r="{reference}"><v>{value!r}</v></c>'

    for number, (_, rows) in enumerate(sheets, 1):
        body = "".join(f'<row r="{r}">' + "".join(cell(f"{COLUMNS[c]}{r}", v) for c, v in enumerate(row) if v is not None) +
                       "</row>" for r, row in enumerate(rows, 1) if row)
        parts[f"xl/worksheets/sheet{number}.xml"] = (
            '<worksheet xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main"><sheetData>' + body +
            "</sheetData></worksheet>")
    main = "http://schemas.openxmlformats.org/spreadsheetml/2006/main"
    rel = "http://schemas.openxmlformats.org/officeDocument/2006/relationships"
    parts["xl/workbook.xml"] = (
        f'<workbook xmlns="{main}" xmlns:r="{rel}"><workbookPr{" date1904=" + quoted("1") if dates1904 else ""}/><sheets>' +
        "".join(f'<sheet name="{n}" sheetId="{i}" r:id="rId{i}"/>' for i, (n, _) in enumerate(sheets, 1)) +
        "</sheets></workbook>")
    parts["xl/_rels/workbook.xml.rels"] = (
        '<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">' +
        "".join(f'<Relationship Id="rId{i}" Type="{rel}/worksheet" Target="worksheets/sheet{i}.xml"/>'
                for i in range(1, len(sheets) + 1)) +
        f'<Relationship Id="rId90" Type="{rel}/styles" Target="styles.xml"/>'
        f'<Relationship Id="rId91" Type="{rel}/sharedStrings" Target="sharedStrings.xml"/></Relationships>')
    parts["xl/styles.xml"] = (
        f'<styleSheet xmlns="{main}"><numFmts count="1"><numFmt numFmtId="164" formatCode="dd\\.mm\\.yyyy\\ hh:mm;@"/></numFmts>'
        '<cellXfs count="4"><xf numFmtId="0"/><xf numFmtId="164"/><xf numFmtId="20"/><xf numFmtId="14"/></cellXfs></styleSheet>')
    parts["xl/sharedStrings.xml"] = (f'<sst xmlns="{main}">' + "".join(f"<si><t>{t}</t></si>" for t in texts) + "</sst>")
    parts["[Content_Types].xml"] = '<Types xmlns="http://schemas.openxmlformats.org/package/2006/content-types"/>'
    data = io.BytesIO()
    with zipfile.ZipFile(data, "w", zipfile.ZIP_DEFLATED) as archive:
        for name, text in parts.items():
            archive.writestr(zipfile.ZipInfo(name), '<?xml version="1.0" encoding="UTF-8" standalone="yes"?>\n' + text,
                             zipfile.ZIP_DEFLATED)
    return data.getvalue()


def spreadsheets():
    t = moments((2024, 1, 14, 22), 60)
    a = wave(60, 21, 2, 2)
    serial = lambda x, epoch=dt.datetime(1899, 12, 30): (x.replace(tzinfo=None) - epoch).total_seconds() / 86400
    rows = [["Zeit", "Temperatur (°C)", "Pumpe"]] + [[("date", serial(x)), v, bool(i % 3)] for i, (x, v) in enumerate(zip(t, a))]
    props = [prop("Temperatur", "°C", t, a), prop("Pumpe", "", t, [1 if i % 3 else 0 for i in range(60)])]
    case("sheet_dates.xlsx", xlsx([("Daten", rows)]), props, 60)
    case("sheet_second.xlsx", xlsx([("Deckblatt", []), ("Info", [["Bericht über Raum 1"]]), ("Daten", rows)]), props, 60)
    case("sheet_inline.xlsx", xlsx([("Daten", rows)], shared=False), props, 60)
    case("sheet_named.xlsx", xlsx([("Andere", [["t", "x"], [("date", 45000.0), 1]]), ("Daten", rows)]), props, 60,
         options={"sheet": "Daten"})
    rows1904 = [["Time", "Value (kW)"]] + [[("date", serial(x, dt.datetime(1904, 1, 1))), v] for x, v in zip(t, a)]
    case("sheet_1904.xlsx", xlsx([("Data", rows1904)], True), [prop("Value", "kW", t, a)], 60)
    rows = [["Monthly report"], [], ["Date", "Time", "Flow [m³/h]", "Ratio"]]
    rows += [[("day", float(int(serial(x)))), ("time", serial(x) % 1), None if i == 4 else v,
              ("error", "#DIV/0!") if i == 6 else ("formula", v * 2)] for i, (x, v) in enumerate(zip(t, a))]
    rows += [["Total", None, sum(a)]]
    case("sheet_report.xlsx", xlsx([("Report", rows)]),
         [prop("Flow", "m³/h", t, [None if i == 4 else v for i, v in enumerate(a)]),
          prop("Ratio", "", t, [None if i == 6 else v * 2 for i, v in enumerate(a)])], 60)
    rows = [["Zeit", "Wert"]] + [[f"{x:%d.%m.%Y %H:%M}", german(v, 2)] for x, v in zip(t, a)]
    case("sheet_texts.xlsx", xlsx([("Daten", rows)]), [prop("Wert", "", t, a)], 60)


def odd_files():
    t = moments((2024, 1, 14, 22), 60)
    a = wave(60, 12.5, 1, 3)
    case("odd_am_pm_column.csv",
         lines([["Date", "Time", "AM/PM", "Temp"]] +
               [[f"{x:%m/%d/%Y}", f"{x:%I:%M}", f"{x:%p}", str(v)] for x, v in zip(t, a)], ","),
         [prop("Temp", "", t, a)], 60)
    d = moments((2024, 3, 4, 1), 20)
    case("odd_order_in_header.csv",
         lines([["Date (MM/DD/YYYY HH:MM)", "Temp"]] + [[f"{x:%m/%d/%Y %H:%M}", str(v)] for x, v in zip(d, a)], ","),
         [prop("Temp", "", d, a[:20])], 20)
    case("odd_gap_numbers.txt",
         lines([["MESS_DATUM", "TT"]] + [[f"{x:%Y%m%d%H%M}", "-999" if i % 9 == 4 else f"{v:6.2f}"]
                                        for i, (x, v) in enumerate(zip(t, a))]),
         [prop("TT", "", t, [None if i % 9 == 4 else float(f"{v:.2f}") for i, v in enumerate(a)])], 60)
    case("odd_summary_above.csv",
         lines([["Zeit", "T1", "T2"], ["Max", "99,9", "88,8"], ["Min", "1,1", "2,2"]] +
               [[f"{x:%d.%m.%Y %H:%M}", german(v, 3), german(v + 1, 3)] for x, v in zip(t, a)]),
         [prop("T1", "", t, a), prop("T2", "", t, [round(v + 1, 3) for v in a])], 60)
    case("odd_group_header.csv",
         lines([["", "AHU 1", "", "AHU 2", ""], ["Time", "Temp [°C]", "RH [%]", "Temp [°C]", "RH [%]"]] +
               [[f"{x:%Y-%m-%d %H:%M}", str(v), str(v + 1), str(v + 2), str(v + 3)] for x, v in zip(t, a)], ","),
         [prop("AHU 1 Temp", "°C", t, a), prop("AHU 2 RH", "%", t, [v + 3 for v in a])], 60)
    case("odd_two_times.csv",
         lines([["Time (UTC)", "Local time", "v"]] +
               [[f"{x.astimezone(UTC):%Y-%m-%d %H:%M}", f"{x:%Y-%m-%d %H:%M}", str(v)] for x, v in zip(t, a)], ","),
         [prop("v", "", t, a)], 60)
    case("odd_long_names_of_zones.csv",
         lines([["when", "v"]] + [[f"{x:%a %b %d %Y %H:%M:%S} GMT+0100 (Central European Standard Time)", str(v)]
                                 for x, v in zip(t, a)], ","),
         [prop("v", "", t, a)], 60)
    rows = []
    for i, (x, v) in enumerate(zip(t, a)):
        rows += [[f"{x:%Y-%m-%d %H:%M}", room, str(v + k)] for k, room in enumerate(("Kitchen", "Bath"))]
    case("odd_rooms.csv", lines([["time", "room", "temperature [°C]"]] + rows, ","),
         [prop("Kitchen", "°C", t, a), prop("Bath", "°C", t, [v + 1 for v in a])], 60)
    case("odd_sensor_ids.csv",
         lines([["timestamp", "sensor_id", "value"]] +
               [[f"{x:%Y-%m-%d %H:%M}", str(17 + k), str(v + k)] for x, v in zip(t, a) for k in range(2)], ","),
         [prop("17", "", t, a), prop("18", "", t, [v + 1 for v in a])], 60)
    case("odd_line_breaks_in_names.csv",
         '"Time";"Supply\n[°C]";"Return\n[°C]";\r\n' +
         lines([[f"{x:%Y-%m-%d %H:%M}", str(v), str(v + 1), ""] for x, v in zip(t, a)]),
         [prop("Supply", "°C", t, a), prop("Return", "°C", t, [v + 1 for v in a])], 60)
    case("odd_wide_blanks.txt",
         "Date and time         T supply   T return\n" +
         "".join(f"{x:%Y-%m-%d %H:%M:%S}   {v:8.3f}   {v + 1:8.3f}\n" for x, v in zip(t, a)),
         [prop("T supply", "", t, a), prop("T return", "", t, [round(v + 1, 3) for v in a])], 60)
    months = [dt.datetime(2023, m, 1, tzinfo=BERLIN) for m in range(1, 13)]
    case("odd_months.csv", lines([["Monat", "Verbrauch (kWh)"]] + [[f"{x:%Y-%m}", german(v * 100)] for x, v in zip(months, a)]),
         [prop("Verbrauch", "kWh", months, [round(v * 100, 1) for v in a[:12]])], 12)
    case("odd_uhr.csv", lines([["Zeit", "v"]] + [[f"{x:%d.%m.%Y, %H:%M} Uhr", german(v, 3)] for x, v in zip(t, a)]),
         [prop("v", "", t, a)], 60)
    case("odd_twice.csv", lines([["time", "v"]] + [[f"{x:%Y-%m-%d %H:%M}", str(v)] for _ in range(2) for x, v in zip(t, a)], ","),
         [prop("v", "", t, a)], 60)
    case("odd_returns.csv", lines([["time", "v"]] + [[f"{x:%Y-%m-%d %H:%M}", str(v)] for x, v in zip(t, a)], ",", "\r"),
         [prop("v", "", t, a)], 60)
    case("odd_latin1_blanks.csv",
         lines([["Zeit", "Zähler [Wh]"]] + [[f"{x:%d.%m.%Y %H:%M}", french(v * 1000, 1, "\u00a0")] for x, v in zip(t, a)]),
         [prop("Zähler", "Wh", t, [round(v * 1000, 1) for v in a])], 60, "cp1252")
    case("odd_three_decimals.csv",
         lines([["time", "v"]] + [[f"{x:%Y-%m-%d %H:%M}", f"{v:.3f}"] for x, v in zip(t, a)], ","),
         [prop("v", "", t, a)], 60)
    case("odd_minus_signs.csv",
         lines([["time", "a", "b", "c"]] + [[f"{x:%Y-%m-%d %H:%M}", f"\u2212{v}", f"{v}-", f'="{v}"'] for x, v in zip(t, a)]),
         [prop("a", "", t, [-v for v in a]), prop("b", "", t, [-v for v in a]), prop("c", "", t, a)], 60)
    case("odd_newest_first.csv",
         lines([["time", "v"]] + [[f"{x:%Y-%m-%d %H:%M}", str(v)] for x, v in reversed(list(zip(t, a)))], ","),
         [prop("v", "", t, a)], 60)
    case("odd_sparse_columns.csv",
         lines([["time", "a", "b"]] + [[f"{x:%Y-%m-%d %H:%M}", str(v) if k == 0 else "", str(v + 1) if k else ""]
                                      for x, v in zip(t, a) for k in range(2)], ","),
         [prop("a", "", t, a), prop("b", "", t, [v + 1 for v in a])], 60)
    refused("odd_runtime_only.csv", lines([["Runtime (h)", "v"]] + [[str(25000 + i), str(v)] for i, v in enumerate(a)], ","),
            "NoTimeColumn")
    refused("odd_seconds_only.csv", lines([["Time [s]", "v"]] + [[str(i / 10), str(v)] for i, v in enumerate(a)], ","),
            "NoTimeColumn")
    refused("odd_two_tables.csv",
            lines([["time", "a"]] + [[f"{x:%Y-%m-%d %H:%M}", str(v)] for x, v in zip(t, a)] + [["time", "b"]] +
                  [[f"{x:%Y-%m-%d %H:%M}", str(v)] for x, v in zip(t, a)], ","), "AnotherHeader")
    case("odd_mode_column.csv",
         lines([["time", "mode", "v"]] + [[f"{x:%Y-%m-%d %H:%M}", ("on", "auto", "eco")[i % 3], str(v)]
                                         for i, (x, v) in enumerate(zip(t, a))], ","),
         [prop("v", "", t, a)], 60)
    case("odd_german.csv.gz",
         gzip.compress(lines([["Datum", "Uhrzeit", "T [°C]"]] + [[f"{x:%d.%m.%Y}", f"{x:%H:%M}", german(v, 3)]
                                                              for x, v in zip(t, a)]).encode("cp1252"), mtime=0),
         [prop("T", "°C", t, a)], 60)


def day_files():
    """A row for each day, a column for each time of day."""
    t = moments((2024, 3, 1, 0, 0), 24 * 20, 60)
    a = wave(len(t), 40, 12, 1)
    days = [(t[i], a[i:i + 24]) for i in range(0, len(t), 24)]
    hours = [f"{h:02d}:00" for h in range(24)]
    case("day_rows_hours.csv",
         lines([["Datum"] + hours + ["Summe"]] +
               [[f"{d:%d.%m.%Y}"] + [german(v) for v in row] + [german(sum(row))] for d, row in days]),
         [prop("Value", "", t, a)], 480)
    q = moments((2024, 1, 15, 0, 15), 96 * 3, 15)
    quarters = [f"{(m + 1) // 4:02d}:{(m + 1) % 4 * 15:02d}" for m in range(96)]
    b, c = wave(len(q), 3, 2, 2), wave(len(q), 9, 1, 2)
    rows = []
    for i in range(0, len(q), 96):
        day = f"{q[i]:%Y-%m-%d}"
        rows.append(["Main", day] + [str(v) for v in b[i:i + 96]])
        rows.append(["Cellar", day] + [str(v) for v in c[i:i + 95]] + [""])
    last = [v if (i + 1) % 96 else None for i, v in enumerate(c)]
    case("day_rows_quarters_of_meters.csv", lines([["Meter", "Date"] + quarters] + rows, ","),
         [prop("Main", "", q, b), prop("Cellar", "", q, last)], 288)


def unit_files():
    """Units that differ: from cell to cell, between header and cells, from row to row."""
    t = moments((2024, 5, 1, 10, 0), 13, 15)
    a = wave(13, 950, 20, 1)
    watts = [f"{v} W" for v in a[:12]] + ["1.2 kW"]
    stored = a[:12] + [1200]
    stamps = [f"{x:%Y-%m-%d %H:%M}" for x in t]
    case("unit_in_cells_mixed.csv", lines([["time", "power"]] + [list(r) for r in zip(stamps, watts)], ","),
         [prop("power", "W", t, stored)], 13)
    case("unit_in_cells_few_rows.csv", lines([["time", "energy"], [stamps[0], "950 Wh"], [stamps[1], "1.2 kWh"]], ","),
         [prop("energy", "Wh", t[:2], [950, 1200])], 2)
    case("unit_in_cells_of_another_kind.csv",
         lines([["time", "power"]] + [[x, "20 °C" if i == 4 else w] for i, (x, w) in enumerate(zip(stamps, watts))], ","),
         [prop("power", "W", t, [None if i == 4 else v for i, v in enumerate(stored)])], 13, bad_cells=1)
    case("unit_in_header_and_cells.csv", lines([["time", "Power (kW)"]] + [list(r) for r in zip(stamps, watts)], ","),
         [prop("Power", "kW", t, [v / 1000 for v in stored])], 13)
    refused("unit_in_header_against_cells.csv",
            lines([["time", "Power (kW)"]] + [[x, f"{v} °C"] for x, v in zip(stamps, a)], ","), "UnitsDisagree")
    rows = [[x, "P1", *w.split()] for x, w in zip(stamps, watts)]
    rows += [[x, "T1", "20" if i % 2 else "68", "°C" if i % 2 else "°F"] for i, x in enumerate(stamps)]
    case("unit_by_row.csv", lines([["Time", "Sensor", "Value", "Unit"]] + rows, ","),
         [prop("P1", "W", t, stored), prop("T1", "°F", t, [68] * 13)], 13)
    rows = [[x, "Outdoor", v, u] for x in stamps for v, u in (("20.5", "°C"), ("45", "%"))]
    text = lines([["Time", "Sensor", "Value", "Unit"]] + rows, ",")
    case("unit_tells_quantities_apart.csv", text,
         [prop("Outdoor (°C)", "°C", t, [20.5] * 13), prop("Outdoor (%)", "%", t, [45] * 13)], 13)
    case("unit_of_wanted_rows.csv", text, [prop("Outdoor", "%", t, [45] * 13)], 13, options={"where": "Unit=%"})
    rows = [[f"{x:%d.%m.%Y %H:%M}:{s:02}", d, v, h] for x in t for s, d, v, h in
            ((1, "Keller", "10,5", "70"), (7, "Dach", "25,5", "40"))]
    text = lines([["Zeit", "Gerät", "Temp °C", "Feuchte %"]] + rows)
    seconds_later = [x + dt.timedelta(seconds=1) for x in t]
    refused("devices_alternate.csv", text, "ManyDevices")
    case("devices_alternate_one.csv", text,
         [prop("Temp", "°C", seconds_later, [10.5] * 13), prop("Feuchte", "%", seconds_later, [70] * 13)], 13,
         options={"where": "Gerät=Keller"})
    rows = [[f"{x:%d.%m.%Y %H:%M}", "Keller" if i < 6 else "Dach", german(v), "70"] for i, (x, v) in enumerate(zip(t, a))]
    case("device_moved.csv", lines([["Zeit", "Raum", "Temp °C", "Feuchte %"]] + rows),
         [prop("Temp", "°C", t, a), prop("Feuchte", "%", t, [70] * 13)], 13)
    days = [f"{x:%d.%m.%Y %H:%M}" for x in t]
    case("unit_row_not_known.csv",
         lines([["Zeit", "Durchfluss", "Blindleistung", "Trübung"], ["", "Nm³/h", "kvar", "NTU"]] +
               [[x, german(v), "3,5", "7"] for x, v in zip(days, a)]),
         [prop("Durchfluss", "", t, a), prop("Blindleistung", "", t, [3.5] * 13), prop("Trübung", "", t, [7] * 13)], 13)
    case("unit_in_header_written_oddly.csv",
         lines([["Zeit", "Keller %rF", "Dach % r.F.", "Flur (% rF)", "Tagesertrag / (kWh)", "Leistung AC / W"]] +
               [[x, "50", "51", "52", "1,5", german(v)] for x, v in zip(days, a)]),
         [prop("Keller", "%", t, [50] * 13), prop("Dach", "%", t, [51] * 13), prop("Flur", "%", t, [52] * 13),
          prop("Tagesertrag", "kWh", t, [1.5] * 13), prop("Leistung AC", "W", t, a)], 13)


def recorder_clocks():
    """Recorders whose clock is not that of the zone, and numbers that count from elsewhere than 1970."""
    q = [dt.datetime(2024, 3, 31) + dt.timedelta(minutes=15 * i) for i in range(96)]
    a = wave(96, 8, 3, 1)
    table = lines([["Zeit", "T [°C]"]] + [[f"{x:%d.%m.%Y %H:%M}", german(v)] for x, v in zip(q, a)])
    standard = [x.replace(tzinfo=dt.timezone(dt.timedelta(hours=1))) for x in q]
    refused("clock_standard_in_spring.csv", table, "TimesNotInZone", {"zone": "Europe/Berlin"})
    case("clock_standard_in_spring_said.csv", table, [prop("T", "°C", standard, a)], 96, options={"zone": "+01:00"})
    case("clock_standard_by_name.csv", table, [prop("T", "°C", standard, a)], 96, options={"zone": "CET"})
    empty = [None if x.hour == 2 else v for x, v in zip(q, a)]
    there = [x.replace(tzinfo=BERLIN) for x in q if x.hour != 2]
    case("clock_empty_hour_in_spring.csv",
         lines([["Zeit", "T [°C]"]] + [[f"{x:%d.%m.%Y %H:%M}", "" if v is None else german(v)] for x, v in zip(q, empty)]),
         [prop("T", "°C", there, [v for v in empty if v is not None])], 92, options={"zone": "Europe/Berlin"})
    m = moments((2024, 5, 14, 22), 120, 15)
    b = wave(120, 20, 4, 1)
    unpadded = lines([["date", "time", "temp"]] + [[f"{x:%Y%m%d}", str(x.hour * 100 + x.minute), str(v)]
                                                  for x, v in zip(m, b)], ",")
    case("compact_clock_unpadded.csv", unpadded, [prop("temp", "", m, b)], 120, options={"time": "date+time"})
    case("compact_clock_unpadded_unsaid.csv", unpadded, [prop("temp", "", m, b)], 120)
    refused("elapsed_seconds.csv", lines([["Elapsed [s]", "v"]] + [[str(i), str(v)] for i, v in enumerate(b)], ","),
            "NumbersAreNoTimes", {"time": "Elapsed [s]"})
    refused("elapsed_exponents.csv",
            lines([["Time (s)", "v"]] + [[f"{i / 10:.9E}".replace(".", ","), german(v)] for i, v in enumerate(b)]),
            "NumbersAreNoTimes", {"time": "Time (s)"})
    refused("seconds_since_1904.csv", lines([["timestamp", "v"]] + [[str(3787654321 + i), str(v)] for i, v in enumerate(b)], ","),
            "NumbersAreNoTimes")
    good = [(x, v) for i, (x, v) in enumerate(zip(m, b)) if i != 50]
    case("epoch_stray_zero.csv",
         lines([["timestamp", "v"]] + [["0" if i == 50 else str(int(seconds(x))), str(v)]
                                      for i, (x, v) in enumerate(zip(m, b))], ","),
         [prop("v", "", [x for x, _ in good], [v for _, v in good])], 119, bad_rows=1, options={"time": "timestamp"})
    refused("other_kind.json", json.dumps([{"time": f"{x:%Y-%m-%dT%H:%M}", "v": v} for x, v in zip(q, a)]), "NotATable")
    refused("other_kind.html", "<!DOCTYPE html>\n<html><body><table>\n" +
            "".join(f"<tr><td>{x:%Y-%m-%d %H:%M}</td><td>{v}</td></tr>\n" for x, v in zip(q, a)) +
            "</table></body></html>\n", "NotATable")


def judged(name, unit, times, values, bad):
    """A property of which the values at the places `bad` are marked as bad."""
    return prop(name, unit, times, [None if i in bad else v for i, v in enumerate(values)],
                [(times[i], values[i]) for i in bad])


def quality_files():
    """Values with what a system says of their quality beside them."""
    before = len(ENTRIES)
    t = moments((2024, 1, 14, 22), 40)
    a, b = wave(40, 55, 6, 1), wave(40, 41, 4, 1, 1.0)
    word = lambda i, bad, doubtful=(): bad.get(i) or ("unsicher" if i in doubtful else "gültig")
    case("quality_de.csv",
         lines([["Zeit", "Vorlauf [°C]", "Vorlauf Status", "Rücklauf [°C]", "Rücklauf Status"]] +
               [[f"{x:%d.%m.%Y %H:%M}", german(v), word(i, {3: "ungültig", 4: "Störung"}), german(w),
                 word(i, {9: "Drahtbruch"}, (10,))]
                for i, (x, v, w) in enumerate(zip(t, a, b))]),
         [judged("Vorlauf", "°C", t, a, [3, 4]), judged("Rücklauf", "°C", t, b, [9])], 40, "cp1252")
    iso = lambda x: x.astimezone(UTC).isoformat().replace("+00:00", "Z")
    rows = [[name, iso(x), str(v), "Bad [Device Failure]" if i in bad else "Uncertain" if i == 20 else "Good"]
            for name, values, bad in (("TIC-7.PV", a, (5, 6)), ("FIC-7.PV", b, (6,)))
            for i, (x, v) in enumerate(zip(t, values))]
    case("quality_long.csv", lines([["Tag", "Time", "Value", "Quality"]] + rows, ","),
         [judged("TIC-7.PV", "", t, a, [5, 6]), judged("FIC-7.PV", "", t, b, [6])], 40)
    rows = [[iso(x), "Kessel", german(v), "192" if i != 12 else "0"] for i, (x, v) in enumerate(zip(t, a))]
    rows += [[iso(x), "Speicher", german(v), "192" if i != 13 else "24"] for i, (x, v) in enumerate(zip(t, b))]
    case("quality_long_codes_de.csv", lines([["Zeitstempel", "Name", "Wert", "Qualität"]] + rows),
         [judged("Kessel", "", t, a, [12]), judged("Speicher", "", t, b, [13])], 40)
    case("quality_of_row.csv",
         lines([["Date", "Flow (m³/h)", "Pressure (bar)", "Quality"]] +
               [[f"{x:%Y-%m-%d %H:%M}", str(v), str(w), "INVALID" if i in (2, 30) else "VALID"]
                for i, (x, v, w) in enumerate(zip(t, a, b))], ","),
         [judged("Flow", "m³/h", t, a, [2, 30]), judged("Pressure", "bar", t, b, [2, 30])], 40)
    case("quality_codes.csv",
         lines([["Timestamp", "TI-101.Value", "TI-101.Quality", "TI-102.Value", "TI-102.Quality"]] +
               [[iso(x), str(v), "0" if i == 7 else "192", str(w), "64" if i == 7 else "216"]
                for i, (x, v, w) in enumerate(zip(t, a, b))], ",", "\n"),
         [judged("TI-101.Value", "", t, a, [7]), prop("TI-102.Value", "", t, b)], 40)
    case("quality_lists.csv",
         lines([["Timestamp", "Value (°C)", "Status"]] +
               [[f"{x:%Y-%m-%d %H:%M:%S}", str(v), quoted("{down,stale}") if i == 8 else "{alarm}" if i == 9 else "{ok}"]
                for i, (x, v) in enumerate(zip(t, a))], ","),
         [judged("Value", "°C", t, a, [8])], 40)
    long = moments((2024, 1, 14, 22), 700, 1)
    c = wave(700, 12, 3, 2)
    case("quality_only_when_bad.csv",
         lines([["time", "Level", "Level_flag"]] +
               [[iso(x), str(v), "error" if i in (650, 651) else ""] for i, (x, v) in enumerate(zip(long, c))], ",", "\n"),
         [judged("Level", "", long, c, [650, 651])], 700)
    case("quality_measured_status.csv",
         lines([["Time", "Temp", "Status"]] +
               [[f"{x:%Y-%m-%d %H:%M}", str(v), str(i // 5 % 2)] for i, (x, v) in enumerate(zip(t, a))], ","),
         [prop("Temp", "", t, a), prop("Status", "", t, [i // 5 % 2 for i in range(40)])], 40)
    case("quality_named.csv",
         lines([["Time", "Temp", "Hum", "Code"]] +
               [[f"{x:%Y-%m-%d %H:%M}", str(v), str(w), "7" if i == 11 else "0"]
                for i, (x, v, w) in enumerate(zip(t, a, b))], ","),
         [judged("Temp", "", t, a, [11]), prop("Hum", "", t, b)], 40, options={"quality": "Code=Temp", "bad": "7"})
    case("quality_sheet_de.xlsx",
         xlsx([("Daten", [["Zeit", "Druck [bar]", "Druck Gültigkeit"]] +
                [[f"{x:%d.%m.%Y %H:%M}", v, "N" if i == 3 else "V"] for i, (x, v) in enumerate(zip(t, a))])]),
         [judged("Druck", "bar", t, a, [3])], 40)
    for entry in ENTRIES[before:]:
        entry["columns"] = len(entry["properties"])  # and no others


def packed(entries):
    buffer = io.BytesIO()
    with zipfile.ZipFile(buffer, "w") as archive:
        for name, text in entries:
            archive.writestr(zipfile.ZipInfo(name, (2024, 1, 1, 0, 0, 0)), text)
    return buffer.getvalue()


def other_archives():
    """Archives that are no spreadsheet we read."""
    refused("odd_packed.zip", packed([("a.csv", "time,a\n2024-01-01,1\n"), ("b.csv", "time,b\n2024-01-01,1\n")]),
            "PackedFiles")
    refused("odd_open_document.ods", packed([("mimetype", "application/vnd.oasis.opendocument.spreadsheet"),
                                             ("content.xml", "<office:document-content/>")]), "NotText")


def main():
    for part in (german_files, us_files, french_files, number_times, logger_files, long_files, management_files,
                 spreadsheets, odd_files, day_files, unit_files, quality_files, other_archives,
                 recorder_clocks):
        part()
    (HERE / "manifest.json").write_text(json.dumps(ENTRIES, indent=1, ensure_ascii=False) + "\n", encoding="utf-8")


if __name__ == "__main__":
    main()
