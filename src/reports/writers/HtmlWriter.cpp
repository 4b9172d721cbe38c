#include "reports/writers/HtmlWriter.h"

#include "core/text/Markup.h"
#include "core/text/Text.h"
#include "reports/writers/WorkbookWriter.h"

namespace kavu {

namespace {

constexpr std::string_view kStyle = R"(<style>
:root { color-scheme: light dark; --line: #c0c0c0; --head: #e8e8e8; --back: #ffffff; --text: #1a1a1a; }
@media (prefers-color-scheme: dark) {
  :root { --line: #555555; --head: #333333; --back: #1c1c1c; --text: #e6e6e6; }
}
body { font-family: "Liberation Sans", Arial, sans-serif; margin: 1.5em; background: var(--back); color: var(--text); }
h1 { font-size: 1.4em; white-space: pre-line; }
h2 { font-size: 1.1em; }
table { border-collapse: collapse; font-size: 0.9em; }
th, td { border: 1px solid var(--line); padding: 0.15em 0.5em; text-align: left; vertical-align: top; }
td { white-space: pre-line; }
th { background: var(--head); position: sticky; top: 0; }
th button { all: unset; cursor: pointer; font-weight: bold; white-space: pre-line; }
th button:focus-visible { outline: 2px solid currentColor; }
td.number { text-align: right; font-variant-numeric: tabular-nums; }
.frame { overflow: auto; max-height: 85vh; }
label { display: block; margin: 0.7em 0; }
@media print {
  body { margin: 0; background: #ffffff; color: #000000; }
  .frame { overflow: visible; max-height: none; }
  .search { display: none; }
  section { break-before: page; }
  section:first-of-type { break-before: auto; }
  thead { display: table-header-group; }
  th { position: static; }
}
</style>
)";

constexpr std::string_view kScript = R"(<script>
for (const section of document.querySelectorAll("section")) {
  const table = section.querySelector("table.list");
  const search = section.querySelector("input");
  if (!table) continue;
  const body = table.tBodies[0];
  search.addEventListener("input", () => {
    const wanted = search.value.toLowerCase();
    for (const row of body.rows) {
      row.hidden = !row.textContent.toLowerCase().includes(wanted);
    }
  });
  table.querySelectorAll("th button").forEach((button, column) => {
    button.addEventListener("click", () => {
      const head = button.parentElement;
      const down = head.getAttribute("aria-sort") === "ascending";
      for (const each of table.querySelectorAll("th")) each.removeAttribute("aria-sort");
      head.setAttribute("aria-sort", down ? "descending" : "ascending");
      const sorter = new Intl.Collator(undefined, { numeric: true }).compare;
      const rows = [...body.rows].sort((a, b) =>
        sorter(a.cells[column].textContent, b.cells[column].textContent) * (down ? -1 : 1));
      body.append(...rows);
    });
  });
}
</script>
)";

/// The text as that of an element; line breaks stay.
void addHtmlText(std::string& text, std::string_view bytes) {
    if (isPlainMarkup(bytes)) {
        text += bytes;
        return;
    }
    for (const char c : workbookText(bytes)) {
        if (const auto entity = markupEntity(c); !entity.empty()) {
            text += entity;
        } else {
            text += c;
        }
    }
}

std::string htmlText(std::string_view bytes) {
    std::string text;
    addHtmlText(text, bytes);
    return text;
}

std::string element(std::string_view name, std::string_view text) {
    std::string html = "<";
    html.append(name).append(">").append(htmlText(text)).append("</");
    return html.append(name).append(">");
}

std::string headHtml(const ReportHead& head) {
    return element("h1", head.title) + "\n<p>" + htmlText(head.tmats) + "<br>" +
           htmlText(head.link) + "<br>" + htmlText(dateLine(head, " ")) + "</p>\n";
}

/// The lines with captions; a heading begins a new table.
std::string linesHtml(const std::vector<ReportLine>& lines) {
    std::string html;
    bool isOpen = false;
    const auto close = [&] {
        html += isOpen ? "</table>\n" : "";
        isOpen = false;
    };
    for (const auto& line : lines) {
        if (line.isHeading) {
            close();
            html += element(line.lead.starts_with('\t') ? "h3" : "h2", line.caption()) + "\n";
        } else if (!line.lead.empty()) {
            html += isOpen ? "" : "<table>\n";
            isOpen = true;
            html += "<tr>" + element("th", line.caption()) + element("td", line.value) + "</tr>\n";
        }
    }
    close();
    return html;
}

void addTableHtml(std::string& html, const ReportTable& table) {
    html +=
        "<label class=\"search\">Search: <input type=\"search\"></label>\n"
        "<div class=\"frame\"><table class=\"list\">\n<thead><tr>";
    if (table.isGrid) {
        html += "<th scope=\"col\"><button type=\"button\">Frame</button></th>";
    }
    for (const auto& column : table.columns) {
        std::string head;
        for (const auto& line : column.head) {
            head += (head.empty() || line.empty() ? "" : " ") + line;
        }
        html += "<th scope=\"col\"><button type=\"button\">" + htmlText(head) + "</button></th>";
    }
    html += "</tr></thead>\n<tbody>\n";
    for (const auto& row : table.rows) {
        html += "<tr>";
        if (table.isGrid) {
            html += "<th scope=\"row\">" + htmlText(row.label()) + "</th>";
        }
        std::size_t i = 0;
        for (const auto cell : row.cells()) {
            const bool isNumber = !table.isGrid && table.columns[i].isNumber;
            html += isNumber ? "<td class=\"number\">" : "<td>";
            addHtmlText(html, cell);
            html += "</td>";
            ++i;
        }
        html += "</tr>\n";
    }
    html += "</tbody>\n</table></div>\n";
    for (const auto& list : table.lists) {
        html += element("h2", list.heading) + "\n<ul>\n";
        for (const auto& line : list.lines) {
            html += element("li", line) + "\n";
        }
        html += "</ul>\n";
    }
}

}  // namespace

std::string htmlPage(const std::vector<ReportContent>& reports) {
    const auto title = reports.empty() ? std::string() : onOneLine(reports.front().head.title);
    std::string html =
        "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
        "<meta name=\"viewport\" content=\"width=device-width\">\n" +
        element("title", title) + "\n";
    html += kStyle;
    html += "</head>\n<body>\n";
    for (const auto& report : reports) {
        html += "<section>\n" + headHtml(report.head) + linesHtml(report.lines);
        if (!report.table.columns.empty() && (!report.table.isGrid || !report.table.rows.empty())) {
            addTableHtml(html, report.table);
        }
        html += "</section>\n";
    }
    html += kScript;
    return html + "</body>\n</html>\n";
}

}  // namespace kavu
