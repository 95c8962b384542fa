#!/usr/bin/env python3
"""page_test.py PETAL MODEL...: opens the pages of models, and of a hostile one, in a browser, and uses them.

Ends with 1 on a fault. Where there is no browser it ends with 77, which is "skipped", or with 1 if the environment has
PETAL_NO_SKIP.
"""
import json
import os
import shutil
import subprocess
import sys
import tempfile
import time

SKIPPED = 1 if "PETAL_NO_SKIP" in os.environ else 77
sys.path.append("/usr/lib/python3/dist-packages")  # for another Python than Debian's
try:
    from selenium import webdriver
    from selenium.common.exceptions import WebDriverException
    from selenium.webdriver.chrome.service import Service
    from selenium.webdriver.common.action_chains import ActionChains
    from selenium.webdriver.common.keys import Keys
except ImportError:
    print("not tried: python3-selenium is not installed")
    sys.exit(SKIPPED)

HIT = "window.hit=1"
# What a browser could take for a part of the page, and what scripts of pages stumble over.
TEXTS = ["<script>%s</script>" % HIT, "</script><script>%s</script>" % HIT, "<img src=x onerror=%s>" % HIT,
         "'><b onmouseover=%s>" % HIT, "javascript:%s" % HIT, "<!--<script>", "]]>", "${%s}" % HIT, "&lt;b&gt;",
         "</title></style></noscript></pre><img src=x onerror=%s>" % HIT, "__proto__", "constructor", "toString",
         "http://example.invalid/x.js", "%3Cscript%3E", "%", "[x](javascript:%s)" % HIT, "#/a::b", "a  b", "x" * 300,
         "pin no", "Sales::Order", "Vector<int>", "a'b", "x{y}", "a;b", "--", "$$", "%date()", "#123;", "CustomerOrderLine"]
faults = []


def check(condition, what):
    if not condition:
        faults.append(what)
        print("FAULT", what)


def hostile_model():
    """Each text as the name, documentation, type and stereotype of a class, an attribute and an operation."""
    classes = []
    for number, text in enumerate(TEXTS):
        classes.append(f'''(object Class "{text}"
            quid "4A{number:010X}" documentation "{text}" stereotype "{text}"
            operations (list Operations (object Operation "{text}" quid "4C{number:010X}" result "{text}" documentation
|{text}
            ))
            class_attributes (list class_attribute_list (object ClassAttribute "{text}"
                quid "4B{number:010X}" type "{text}" initv "{text}")))''')
    views = "".join(f'(object ClassView "Class" "Logical View::{text}" @{number + 1} quidu "4A{number:010X}")'
                    for number, text in enumerate(TEXTS))
    return f'''(object Petal version 42 charSet 0)
(object Design "{TEXTS[0]}" is_unit TRUE is_loaded TRUE
    root_usecase_package (object Class_Category "Use Case View" quid "490000000007"
        logical_models (list unit_reference_list (object UseCase "{TEXTS[2]}" quid "490000000008" documentation "{TEXTS[2]}")))
    root_category (object Class_Category "Logical View" quid "490000000001" exportControl "Public"
        logical_models (list unit_reference_list {" ".join(classes)})
        logical_presentations (list unit_reference_list (object ClassDiagram "{TEXTS[1]}" quid "490000000002"
            title "Main" items (list diagram_item_list {views})))))
'''


def long_model(count):
    """A package of so many classes, each with an attribute of the same type."""
    classes = " ".join(f'''(object Class "Customer{number}Record" quid "4A{number:010X}" documentation "{"Long. " * 100}"
        class_attributes (list class_attribute_list (object ClassAttribute "kind" quid "4B{number:010X}" type "Customer0Record")))'''
                       for number in range(count))
    return f'''(object Petal version 42)
(object Design "Logical View" is_unit TRUE is_loaded TRUE
    root_category (object Class_Category "Logical View" quid "490000000001" logical_models (list unit_reference_list {classes})))
'''


class Page:
    """A page in the browser."""

    def __init__(self, driver, path):
        self.driver, self.url, self.js = driver, "file://" + path, driver.execute_script

    def open(self, address=""):
        self.driver.get("about:blank")
        self.driver.get(self.url + "#" + address)
        self.wait("return !document.getElementById('shell').hidden")

    def wait(self, condition):
        for _ in range(250):
            if self.js(condition):
                return True
            time.sleep(0.02)
        return False

    def go(self, address):
        self.js("location.hash = arguments[0]", address)
        time.sleep(0.05)

    def address(self):
        return self.js("return location.hash").lstrip("#")

    def heading(self):
        return self.js("return document.querySelector('h1').textContent")

    def text(self):
        return self.js("return document.body.innerText")

    def seek(self, text):
        """The addresses of the hits, the first ones."""
        self.js("""const field = document.querySelector('input[type=search]');
                   field.focus(); field.value = arguments[0]; field.dispatchEvent(new Event('input', {bubbles: true}))""", text)
        return self.js("""return [...document.querySelectorAll('#hits a')].filter(a => a.getBoundingClientRect().height > 0)
                          .map(a => a.getAttribute('href').slice(1))""")

    def keys(self, *keys):
        ActionChains(self.driver).send_keys(*keys).perform()

    def media(self, **features):
        self.driver.execute_cdp_cmd("Emulation.setEmulatedMedia", {
            "features": [{"name": name.replace("_", "-"), "value": value} for name, value in features.items()]})

    def quiet(self, name):
        """Nothing was logged, and nothing asked of anybody."""
        messages = [entry["message"] for entry in self.driver.get_log("browser")]
        check(not messages, f"{name}: console: {messages[:2]}")
        asked = []
        for entry in self.driver.get_log("performance"):
            message = json.loads(entry["message"])["message"]
            if message["method"] == "Network.requestWillBeSent":
                asked.append(message["params"]["request"]["url"])
        asked = [url for url in asked if not url.startswith((self.url, "about:", "data:"))]
        check(not asked, f"{name}: requests: {asked[:2]}")


def document_of(page):
    """The JSON in the page, and its classes with their qualified names."""
    document = page.js("return JSON.parse(document.getElementById('petal-model').textContent)")
    classes, open_packages = [], [(package, "") for package in document["model"].get("packages", [])]
    while open_packages:
        package, above = open_packages.pop(0)
        name = above + package["name"]
        classes += [(one, name + "::" + one["name"]) for one in package.get("elements", []) if one["kind"] == "class"]
        open_packages += [(inner, name + "::") for inner in package.get("packages", [])]
    return document, classes


def try_model(page, name):
    page.open()
    document, classes = document_of(page)
    packages = document["model"].get("packages", [])
    check(all(package["name"] in page.text() for package in packages), f"{name}: the tree lacks a package")
    for one, qualified in classes:
        hits = page.seek(one["name"])
        check(bool(hits), f"{name}: {qualified} is not found")
        page.open("/" + qualified)
        check(page.heading() == one["name"] and qualified in page.text(), f"{name}: no page of {qualified}")
        missing = [member["name"] for member in one.get("attributes", []) + one.get("operations", [])
                   if member["name"] not in page.text()]
        check(not missing, f"{name}: {qualified} lacks {missing}")
        check(f"{name}:{one['line']}" in page.text(), f"{name}: {qualified} has no line")
    if len(classes) > 1:
        ids = [page.js("return document.querySelector('#tree .current a').getAttribute('href').slice(1)")
               for _, qualified in classes[:2] if page.open("/" + qualified) is None]
        page.open()
        page.go(ids[0])
        page.go(ids[1])
        page.driver.back()
        check(page.wait(f"return location.hash === '#{ids[0]}'") and page.heading() == classes[0][0]["name"], f"{name}: back")
        page.driver.forward()
        check(page.wait(f"return location.hash === '#{ids[1]}'") and page.heading() == classes[1][0]["name"], f"{name}: forward")
        page.open()
        page.keys("/")
        check(page.js("return document.activeElement.type") == "search", f"{name}: / does not go to the search")
        page.keys(classes[1][0]["name"], Keys.ENTER)
        time.sleep(0.05)
        check(page.heading() == classes[1][0]["name"], f"{name}: Enter does not open the first hit")
        page.keys("h", "?")
        check(page.js("return document.getElementById('help').open") and page.address() == "", f"{name}: h or ?")
        page.keys(Keys.ESCAPE, "t", Keys.ARROW_RIGHT, Keys.ARROW_DOWN, Keys.ENTER)
        time.sleep(0.05)
        check(page.address() != "", f"{name}: the tree by keys")
    pictures = page.js("return document.querySelectorAll('script[type=\"image/svg+xml\"]').length")
    page.open()
    shown = page.js("""return [...document.querySelectorAll('main .item')].map(row => row.dataset.id)""")
    drawn = 0
    for address in shown:
        page.go(address)
        drawn += page.js("return document.querySelectorAll('figure svg').length")
        box = page.js("""return document.querySelector(
                         'g.target[data-view=ClassView] > rect, g.target[data-view=UseCaseView] > rect')""")
        if box:
            box_of_view = "return document.querySelector('figure svg').getAttribute('viewBox')"
            whole = page.js(box_of_view)
            page.js("document.querySelector('figure svg').focus()")
            page.keys("+", Keys.ARROW_RIGHT)
            larger = page.js(box_of_view).split()
            check(float(larger[2]) < float(whole.split()[2]) and float(larger[0]) > float(whole.split()[0]),
                  f"{name}: {address} is not enlarged and moved by keys")
            page.keys("0")
            check(page.js(box_of_view) == whole, f"{name}: {address} is not shown whole by a key")
            kind, title = page.js("""arguments[0].scrollIntoView({block: 'center'});
                return [arguments[0].parentNode.dataset.view, arguments[0].parentNode.querySelector('title').textContent]""", box)
            ActionChains(page.driver).move_to_element(box).click().perform()
            check(page.wait(f"return location.hash !== '#{address}'"), f"{name}: a click on {title} leads nowhere")
            time.sleep(0.05)
            check(page.heading() == title.split("::")[-1] if kind == "ClassView" else page.heading() != "Not found",
                  f"{name}: a click on {title} leads to {page.heading()}")
    check(drawn == pictures > 0, f"{name}: {drawn} of {pictures} diagrams are drawn")
    page.open("!ledger")
    check("Losses" in page.text() and "properties" in page.text(), f"{name}: no ledger")
    page.quiet(name)


def try_markup(path):
    """The page is HTML without a fault, apart from what the checker does not know yet."""
    tidy = shutil.which("tidy")
    if not tidy:
        check("PETAL_NO_SKIP" not in os.environ, "tidy is not installed")
        return
    told = subprocess.run([tidy, "-quiet", "-errors", "--drop-empty-elements", "no", "--warn-proprietary-attributes", "no", path],
                          check=False, capture_output=True, text=True).stderr
    check(not told, f"{os.path.basename(path)}: {told[:300]}")


def try_appearance(page, name, address):
    colours = {}
    for mode in ("light", "dark"):
        page.media(prefers_color_scheme=mode)
        page.open(address)
        colours[mode] = page.js("return getComputedStyle(document.body).backgroundColor")
    check(colours["light"] != colours["dark"], f"{name}: dark is as light as light")
    page.media(prefers_color_scheme="light")
    page.driver.execute_cdp_cmd("Emulation.setDeviceMetricsOverride",
                                {"width": 390, "height": 844, "deviceScaleFactor": 2, "mobile": True})
    for at in ("", address, "!ledger"):
        page.open(at)
        check(page.js("return document.documentElement.scrollWidth") <= 390, f"{name}: wider than a phone at {at}")
    page.js("document.getElementById('menu').click()")
    check(page.js("return document.getElementById('tree').getBoundingClientRect().width") > 300, f"{name}: no tree on a phone")
    page.driver.execute_cdp_cmd("Emulation.clearDeviceMetricsOverride", {})
    page.open(address)
    check(len(page.driver.execute_cdp_cmd("Page.printToPDF", {})["data"]) > 4000, f"{name}: prints nothing")
    page.driver.execute_cdp_cmd("Emulation.setScriptExecutionDisabled", {"value": True})
    page.driver.get("about:blank")
    page.driver.get(page.url)
    tree = page.driver.execute_cdp_cmd("Accessibility.getFullAXTree", {})["nodes"]
    shown = " ".join(str(node.get("name", {}).get("value", "")) for node in tree)
    check("class " in shown and "package " in shown, f"{name}: no outline without script")
    page.driver.execute_cdp_cmd("Emulation.setScriptExecutionDisabled", {"value": False})


def try_hostile(page):
    page.open()
    document, classes = document_of(page)
    check([one["name"] for one, _ in classes] == TEXTS, "hostile: the model differs")
    for one, _ in classes:
        hits = page.seek(one["name"])
        address = "q" + one["quid"].lower()
        check(address in hits[:1], f"hostile: {one['name']!r} is not the first hit")
        page.go(address)
        check(page.heading() == one["name"], f"hostile: {one['name']!r} is shown as {page.heading()!r}")
        page.go("q" + one["attributes"][0]["quid"].lower())
        check(page.js("return document.querySelectorAll('.marked').length") == 1, f"hostile: no mark in {one['name']!r}")
        headings = page.js("return [...document.querySelectorAll('h2')].map(head => head.textContent)")
        check("On diagrams 1" in headings and "Neighbours" not in headings, f"hostile: {one['name']!r} is on no diagram")
    for address in ("q490000000002", "!left", "!ledger", "!types", "/Logical View::%", "%", "constructor", "__proto__", "x"):
        page.go(address)
        check(page.heading(), f"hostile: nothing at {address}")
    check(page.seek("view::customero")[:1] == page.seek("COL")[:1], "hostile: no hit by a qualified name")
    check(page.seek("COL")[:1] == ["q4a%010x" % TEXTS.index("CustomerOrderLine")], "COL does not find CustomerOrderLine")
    check(page.js("return window.hit") is None, "hostile: a text of the model ran")
    links = page.js("return [...document.links].map(a => a.getAttribute('href')).filter(href => !href.startsWith('#'))")
    check(not links, f"hostile: links {links}")
    page.quiet("hostile")


def try_long(page, count):
    """A packed document, and lists of which only a part is rendered."""
    page.open()
    check(page.js("return document.getElementById('petal-model').dataset.encoding") == "gzip+base64", "long: not packed")
    check(page.seek(f"Customer{count - 1}Record")[:1] == ["q4a%010x" % (count - 1)], "long: the last class is not found")
    check(len(page.seek("customer")) < 100, "long: too many hits are rendered")
    page.go("q490000000001")
    check(page.js("return document.querySelectorAll('main .item').length") < 100, "long: too many rows are rendered")
    page.go("q4a%010x" % 0)
    page.js("document.querySelector('.long').scrollTop = 1e9")
    check(page.wait(f"return document.querySelector('main').innerText.includes('Customer{count - 1}Record')"), "long: no end")
    page.quiet("long")


def import_folder(petal, folder, *arguments):
    """Imports the archive in the folder, of which one model fails, and returns the bytes of the index."""
    run = subprocess.run([petal, "import", "-q", "archive", "-f", "html", *arguments], cwd=folder, check=False, capture_output=True)
    check(run.returncode == 5, f"folder: status {run.returncode}")
    with open(os.path.join(folder, arguments[1], "index.html"), "rb") as file:
        return file.read()


def try_resumed(petal, folder):
    """After changes, a run that skips models makes the index of a run that imports all."""
    archive = os.path.join(folder, "archive")
    first = import_folder(petal, folder, "-o", "site")
    check(import_folder(petal, folder, "-o", "site", "--resume") == first, "resumed: the index forgets what it had")
    with open(os.path.join(archive, "new.mdl"), "w", encoding="utf-8") as file:
        file.write(long_model(3))
    changed, deleted, *_ = sorted(name for name in os.listdir(os.path.join(archive, "a #1")))
    shutil.copy(os.path.join(archive, "new.mdl"), os.path.join(archive, "a #1", changed))
    os.remove(os.path.join(archive, "a #1", deleted))
    resumed = import_folder(petal, folder, "-o", "site", "--resume")
    check(resumed == import_folder(petal, folder, "-o", "fresh") != first, "resumed: not the index of a fresh run")
    check(b"upToDate" not in resumed, "resumed: the index shows a word of programs")


def try_folder(driver, petal, folder, models):
    """A page for each model, one of which fails, and an index."""
    archive, site = os.path.join(folder, "archive"), os.path.join(folder, "site")
    os.makedirs(os.path.join(archive, "a #1"))
    for model in models:
        shutil.copy(model, os.path.join(archive, "a #1"))
    with open(os.path.join(archive, "<b>.mdl"), "w", encoding="utf-8") as file:
        file.write("nothing")
    import_folder(petal, folder, "-o", "site")
    try_markup(os.path.join(site, "index.html"))
    index = Page(driver, os.path.join(site, "index.html"))
    index.open()
    for model in [*models, "<b>.mdl"]:
        check(os.path.basename(model) in index.text(), f"folder: the index lacks {model}")
    check(index.text().count("objects, ") == len(models), "folder: the index does not say how much was imported")
    hits = index.seek("TruckPool")
    check(len(hits) == 1, f"folder: TruckPool is found {len(hits)} times")
    index.keys(Keys.ENTER)
    page = Page(driver, "")
    check(page.wait("return location.hash && document.querySelector('h1')") and page.heading() == "TruckPool",
          f"folder: no way from the index to the class, but to {driver.current_url}")
    messages = [entry["message"] for entry in driver.get_log("browser")]
    check(not messages, f"folder: console: {messages[:2]}")


def main(petal, models):
    options = webdriver.ChromeOptions()
    for argument in ("--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage", "--no-first-run",
                     "--window-size=1400,1000", "--disable-background-networking", "--disable-component-update"):
        options.add_argument(argument)
    options.set_capability("goog:loggingPrefs", {"browser": "ALL", "performance": "ALL"})
    try:
        driver = webdriver.Chrome(service=Service(shutil.which("chromedriver") or "chromedriver"), options=options)
    except WebDriverException as error:
        print("not tried: no browser:", str(error).splitlines()[0])
        return SKIPPED
    with tempfile.TemporaryDirectory() as folder:
        long, hostile = os.path.join(folder, "long.mdl"), os.path.join(folder, "hostile.mdl")
        for path, text in ((long, long_model(2000)), (hostile, hostile_model())):
            with open(path, "w", encoding="utf-8") as file:
                file.write(text)
        try:
            for model in [*models, long, hostile]:
                path = os.path.join(folder, os.path.basename(model) + ".html")
                subprocess.run([petal, "import", "-q", model, "-o", path], check=True)
                try_markup(path)
                page = Page(driver, path)
                if model == hostile:
                    try_hostile(page)
                elif model == long:
                    try_long(page, 2000)
                else:
                    try_model(page, os.path.basename(model))
            try_appearance(page, "hostile", "q4a0000000001")
            try_folder(driver, petal, folder, models)
            try_resumed(petal, folder)
        finally:
            driver.quit()
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(os.path.abspath(sys.argv[1]), sys.argv[2:]))
