# SPDX-License-Identifier: MIT
# Behind examples/notebooks/burrau.ipynb: places by Taylor series of 45 digits (tests/truth/generate/taylor.py; 60 digits give the
# same), and the encounter of the paper.
import decimal

TRUE = {
    1: "0.949550134839484248568042798901 2.773231694945563051673287534479 -1.666229065913728926370016956528 "
    "-0.949442409147773127352012194488 0.763253171827292591955187885882 -0.904385089649119329122362765097",
    5: "2.469169667082492226523462934054 -1.227815564157012231877925176340 -2.278202696814356931857091252517 "
    "-0.205449538723054137146876703723 0.341060357201990209571595241582 0.901048969472650648844256468782",
    10: "0.778480410138085493109092810421 0.141392300290086168616792770872 -2.025092477978198586160358375453 "
    "0.097219384146058396502471491651 1.152985736299707573062831014109 -0.162610887490898418372052855845",
    15: "1.418453697937499333619937798341 0.686214320664173410264789109844 -2.006538643259154863797686911736 "
    "0.059940801440350057266951216346 0.754158695844824290866186850384 -0.459681233550784091972434438983",
}
# Encounters magnify whatever rounding does before and in them; by how much, places that are off by 1e-10 there tell.
places = ("x1", "y1", "x2", "y2", "x3", "y3")
held = [name for name in model.names if name[0] in "xy"]
for t, line in TRUE.items():
    magnified = 1
    for when in [0] + [event.t for event in sol.events if event.t < t]:
        there_now = dict(zip(held, sol(when, held)))
        for name in ("x2", "y2"):
            moved = {**there_now, name: there_now[name] + np.longdouble("1e-10")}
            beside = zirk.solve(model.where(moved), t, start=when)
            magnified = max(magnified, np.abs(sol(t, places) - beside(t, places)).max() / 1e-10)
    for name, true in zip(places, line.split()):
        error = abs(decimal.Decimal(str(sol(t, name))) - decimal.Decimal(true))
        # Some ten roundings of 2^-64, each somewhere on the way.
        assert error < 10 * decimal.Decimal(2) ** -64 * decimal.Decimal(float(magnified)), (t, name, error, magnified)
distance, when, pair = encounters[0]
assert pair == "r23" and round(float(when), 2) == 15.83 and round(float(distance), 4) == 0.0004
assert mine < 1e-4 and theirs > 100 * mine and drift < 1e-11
# The pair is that of the masses 4 and 5, and the third one leaves.
assert sol(70, "r23") < 1 < 10 < sol(70, "r13")
